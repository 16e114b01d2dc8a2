#pragma once

#include "Output/JSON.h"
#include "People/PersonOutcome.h"
#include "Scan/CardScan.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace qvhost {

/// A file as it was when it was read.
struct PictureState {
    /// Its place in the file system; bytes that are no text as %XX.
    std::string file;
    std::uintmax_t size = 0;
    /// When it was changed, in the system's own count.
    std::string modified;
    /// The MD5 of its bytes; empty while nobody has read them.
    std::string hash;

    /// Without the hash; nothing when there is no such file.
    static std::optional<PictureState> of(const std::filesystem::path& file);
};

/// What a finished card of a batch says of itself, in `batch.json` in its folder. Everything that lists cards is made
/// out of these, so that lists can be made again at any time.
struct CardRecord {
    std::string name;
    std::vector<PictureState> pictures;
    /// The whole object: that of `scan --json`, and before it `name`, `pictures`, `language`, `complete`, `savedIn`,
    /// `problems`, `remarks`, `thumbnails`.
    JSON::Value object;

    /// Whether nothing failed.
    bool isComplete() const;
    /// Where its contact was saved; empty when it was not.
    std::string savedIn() const;

    /// The record in a finished card's folder; nothing when there is none that can be read.
    static std::optional<CardRecord> read(const std::filesystem::path& folder);
    static constexpr const char* kFile = "batch.json";
};

/// The strings under a key that hold something; none when there is no such list.
std::vector<std::string> stringsIn(const JSON::Value& object, const char* key);
/// The string under a key; empty when there is none.
std::string stringIn(const JSON::Value& object, const char* key);

}  // namespace qvhost
