#pragma once

#include "Support/FileDescriptor.h"
#include "Support/Result.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qvhost {

/// What all cards of a batch share; what was not said when it goes on is as it was when it began.
struct BatchSettings {
    std::optional<std::string> language;
    bool takesPairsInOrder = false;
};

/// The folder that a batch writes to. Each finished card has a folder of its own in `cards/`, which is there whole or
/// not at all, whenever the program ends. One program writes to it at a time.
class BatchFolder {
  public:
    /// Whether a batch writes, or has written, to that folder.
    static bool isOne(const std::filesystem::path& folder);

    /// Makes the folder for a new batch, or goes on with the batch in it. A folder with anything else in it is refused,
    /// and so is, without `resumes`, one with a batch.
    static Result<std::unique_ptr<BatchFolder>> open(const std::filesystem::path& folder, bool resumes,
                                                     BatchSettings settings);

    const std::filesystem::path& path() const { return mFolder; }
    const BatchSettings& settings() const { return mSettings; }

    /// The names of the finished cards, in natural order.
    std::vector<std::string> cards() const;
    std::filesystem::path folderOf(const std::string& card) const;

    /// Makes an empty folder for one more card; whatever was not finished before is gone.
    [[nodiscard]] std::optional<Failure> beginCard() const;
    std::filesystem::path unfinishedCard() const;
    /// Puts that folder in its place, over one of that name. Afterwards it outlives a power cut.
    [[nodiscard]] std::optional<Failure> finishCard(const std::string& card) const;

  private:
    BatchFolder(std::filesystem::path folder, BatchSettings settings)
        : mFolder(std::move(folder)), mSettings(std::move(settings)) {}

    [[nodiscard]] std::optional<Failure> lock();
    [[nodiscard]] std::optional<Failure> prepare(bool resumes);
    [[nodiscard]] std::optional<Failure> start() const;
    void takeOverSettings();
    void removeTraces() const;

    std::filesystem::path mFolder;
    BatchSettings mSettings;
    FileDescriptor mLock;
};

}  // namespace qvhost
