#include "Batch/BatchFolder.h"

#include "Output/JSON.h"
#include "Support/FileReading.h"
#include "Support/FileWriting.h"
#include "Support/NaturalOrder.h"

#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <sys/file.h>

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <system_error>

namespace qvhost {
namespace {

namespace fs = std::filesystem;

constexpr const char* kMark = "qvcardscan-batch.json";
constexpr const char* kCards = "cards";
/// What begins like this is this program's own and in the making; it counts for nothing.
constexpr std::string_view kPassing = ".qvcardscan-";
constexpr const char* kLock = ".qvcardscan-lock";
constexpr const char* kNew = ".qvcardscan-new";
constexpr std::string_view kOld = ".qvcardscan-old-";

bool isPassing(const fs::path& file) {
    return file.filename().native().starts_with(kPassing);
}

std::vector<fs::path> entriesOf(const fs::path& folder) {
    std::vector<fs::path> entries;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error))
        entries.push_back(entry->path());
    return entries;
}

bool isEmpty(const fs::path& folder) {
    const auto entries = entriesOf(folder);
    return std::all_of(entries.begin(), entries.end(), isPassing);
}

Failure notMoved(const fs::path& folder, const std::error_code& error) {
    return {ExitStatus::NotWritten, "\"" + folder.string() + "\" could not be written: " + error.message() + "."};
}

Failure isThereAlready(const fs::path& folder, std::size_t cards) {
    return {ExitStatus::WrongCall, "\"" + folder.string() +
                                       "\" holds an earlier batch (cards: " + std::to_string(cards) +
                                       "). Add --resume to go on with it, or choose another folder with -o."};
}

Failure isSomethingElse(const fs::path& folder) {
    return {ExitStatus::WrongCall, "\"" + folder.string() +
                                       "\" is not empty, and what it holds is no batch. Choose an empty or a new "
                                       "folder with -o."};
}

}  // namespace

bool BatchFolder::isOne(const fs::path& folder) {
    std::error_code error;
    return fs::exists(folder / kMark, error) || fs::exists(folder / kLock, error);
}

Result<std::unique_ptr<BatchFolder>> BatchFolder::open(const fs::path& folder, bool resumes, BatchSettings settings) {
    if (auto failure = makeFolder(folder)) return *std::move(failure);
    std::unique_ptr<BatchFolder> opened(new BatchFolder(folder, std::move(settings)));
    std::error_code error;
    // Looked at before the lock, which would leave a file in somebody else's folder.
    if (!fs::exists(folder / kMark, error) && !isEmpty(folder)) return isSomethingElse(folder);
    if (auto failure = opened->lock()) return *std::move(failure);
    if (auto failure = opened->prepare(resumes)) return *std::move(failure);
    return opened;
}

std::optional<Failure> BatchFolder::lock() {
    mLock = FileDescriptor(::open((mFolder / kLock).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644));
    if (!mLock.isOpen()) return notMoved(mFolder, {errno, std::generic_category()});
    // Where locks are not to be had, nobody else can be noticed.
    if (::flock(mLock.number(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) return std::nullopt;
    return Failure{ExitStatus::WrongCall, "Another batch is writing to \"" + mFolder.string() +
                                              "\" just now. Wait for its end, or choose another folder with -o."};
}

std::optional<Failure> BatchFolder::prepare(bool resumes) {
    std::error_code error;
    if (!fs::exists(mFolder / kMark, error)) return start();
    if (resumes) takeOverSettings();
    removeTraces();
    const std::size_t count = cards().size();
    // One that came to nothing, for what else was wrong with the call, is in nobody's way.
    return resumes || count == 0 ? start() : isThereAlready(mFolder, count);
}

std::optional<Failure> BatchFolder::start() const {
    const JSON::Value mark = {
        {"version", 1}, {"language", JSON::from(mSettings.language)}, {"pairs", mSettings.takesPairsInOrder}};
    // The mark goes first: without it everything else would be somebody else's.
    if (auto failure = writeFile(mFolder / kMark, JSON::text(mark))) return failure;
    return makeFolder(mFolder / kCards);
}

void BatchFolder::takeOverSettings() {
    constexpr std::size_t kLargest = 65536;
    const auto bytes = readFile(mFolder / kMark, kLargest);
    if (!bytes) return;
    const auto mark = JSON::Value::parse(bytes->begin(), bytes->end(), nullptr, /*allow_exceptions=*/false);
    if (!mark.is_object()) return;
    const auto language = mark.find("language");
    if (!mSettings.language && language != mark.end() && language->is_string()) mSettings.language = *language;
    const auto pairs = mark.find("pairs");
    if (pairs != mark.end() && pairs->is_boolean() && pairs->get<bool>()) mSettings.takesPairsInOrder = true;
}

/// Of a program that was ended in the middle. A card that was to be replaced and is in no place goes back into its own.
void BatchFolder::removeTraces() const {
    std::error_code error;
    for (const fs::path& entry : entriesOf(mFolder / kCards)) {
        if (!isPassing(entry)) continue;
        const std::string name = entry.filename().string();
        const bool isOld = name.starts_with(kOld) && name.size() > kOld.size();
        if (isOld && !fs::exists(folderOf(name.substr(kOld.size())), error)) {
            fs::rename(entry, folderOf(name.substr(kOld.size())), error);
        } else {
            fs::remove_all(entry, error);
        }
    }
    for (const fs::path& entry : entriesOf(mFolder)) {
        if (isPassing(entry) && entry.filename() != kLock) fs::remove_all(entry, error);
    }
}

std::vector<std::string> BatchFolder::cards() const {
    std::vector<std::string> names;
    std::error_code error;
    for (const fs::path& entry : entriesOf(mFolder / kCards)) {
        if (!isPassing(entry) && fs::is_directory(entry, error)) names.push_back(entry.filename().string());
    }
    std::sort(names.begin(), names.end(), [](const auto& one, const auto& other) { return comesBefore(one, other); });
    return names;
}

fs::path BatchFolder::folderOf(const std::string& card) const {
    return mFolder / kCards / card;
}

fs::path BatchFolder::unfinishedCard() const {
    return mFolder / kCards / kNew;
}

std::optional<Failure> BatchFolder::beginCard() const {
    std::error_code error;
    fs::remove_all(unfinishedCard(), error);
    return makeFolder(unfinishedCard());
}

std::optional<Failure> BatchFolder::finishCard(const std::string& card) const {
    const fs::path place = folderOf(card);
    const fs::path old = mFolder / kCards / (std::string(kOld) + card);
    std::error_code error;
    const bool replaces = fs::exists(place, error);
    if (replaces) fs::remove_all(old, error);
    if (replaces) fs::rename(place, old, error);
    if (!error) fs::rename(unfinishedCard(), place, error);
    if (error) return notMoved(place, error);
    if (const int number = syncFolder(mFolder / kCards); number != 0)
        return notMoved(place, {number, std::generic_category()});
    if (replaces) fs::remove_all(old, error);
    return std::nullopt;
}

}  // namespace qvhost
