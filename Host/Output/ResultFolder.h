#pragma once

#include "Output/Resources.h"
#include "Scan/CardScan.h"
#include "Support/Result.h"

#include <filesystem>
#include <optional>
#include <set>
#include <string>

namespace qvhost {

/// The folder that `-o` names. It holds one card: what an earlier one left under the same names is replaced or removed,
/// and so are pictures that no note refers to any longer.
class ResultFolder {
  public:
    explicit ResultFolder(std::filesystem::path folder) : mFolder(std::move(folder)) {}

    /// Makes the folder. To be called before anything is sent, so that no answer is lost.
    [[nodiscard]] std::optional<Failure> make() const;

    /// Writes all files; nothing, or what could not be written.
    [[nodiscard]] std::optional<Failure> write(const ScanOutcome& outcome, const Resources& resources) const;

    const std::filesystem::path& path() const { return mFolder; }

  private:
    [[nodiscard]] std::optional<Failure> writeOrRemove(const std::string& name, const QVString& text) const;
    [[nodiscard]] std::optional<Failure> writeTexts(const ScanOutcome& outcome, const Resources& resources) const;
    [[nodiscard]] std::optional<Failure> writeResource(const std::string& hash, const Resources& resources) const;
    void removeOtherResources(const std::set<std::string>& hashes) const;

    std::filesystem::path mFolder;
};

}  // namespace qvhost
