#pragma once

#include "Fields/Field.h"
#include "Recogniser.h"
#include "Text/TextLine.h"

#include <opencv2/core.hpp>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <vector>

namespace qv::recognition {

/// Keeps what every stage made of a card, for whoever wants to know why a card was read as it was. Only ever used when
/// asked for: what it writes is what a card says, so only the server's own user may read it. Every card has a folder of
/// its own, NUMBER/, and in it the files stand in the order of the stages: 01-request.jpg, 02-sent.ppm, … Without a
/// folder every call does nothing. Belongs to one thread; several may write into one folder, also of several processes.
class DebugFolder {
  public:
    DebugFolder() = default;
    explicit DebugFolder(std::filesystem::path folder) : mFolder(std::move(folder)) {}

    /// Begins with another card: what follows is written under the next free number. Returns that, empty when nothing
    /// can be kept.
    std::string nextCard();
    void keep(const std::string& stage, std::span<const std::uint8_t> jpeg);  ///< as STAGE.jpg
    void keep(const std::string& stage, const cv::Mat& picture);              ///< as STAGE.pgm or .ppm
    void keep(const std::string& stage, const std::vector<Word>& words);      ///< this and what follows as STAGE.tsv
    void keep(const std::string& stage, const std::vector<TextLine>& lines);
    void keep(const std::string& stage, const std::vector<Field>& fields);
    /// The answer as STAGE.xml, and the stages' times as times.tsv.
    void keep(const std::string& stage, const Recognition& recognition);

  private:
    bool isKeeping() const { return !mCard.empty(); }
    std::ofstream fileFor(const std::string& stage, const std::string& ending);

    std::filesystem::path mFolder;
    std::filesystem::path mCard;
    int mNumber = 0;
    int mFiles = 0;
};

/// A type's name as answers spell it.
std::string_view nameOf(FieldType type);

}  // namespace qv::recognition
