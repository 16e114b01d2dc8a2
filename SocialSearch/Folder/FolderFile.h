#pragma once

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

/// Files that are whole at any moment, whatever happens to the process that writes them.

enum class FileState { Read, Missing, Unreadable, TooLarge };

/// A regular file's bytes. Nothing else is opened for long: a pipe cannot hold up the reader.
struct FileContent {
    FileState state = FileState::Unreadable;
    std::string bytes;
    /// The file's permissions.
    mode_t mode = 0600;
};
FileContent readFileContent(const std::filesystem::path& file, std::size_t maximumSize);

/// Makes what was done in a folder survive a power failure.
bool syncFolder(const std::filesystem::path& folder);

/// A file on its way into a folder, under a name of its own that no reader looks at. It goes away unless it is put in
/// place.
class TemporaryFile {
  public:
    /// Writes and syncs it; `isWritten` says whether that worked.
    TemporaryFile(const std::filesystem::path& folder, std::string_view bytes, mode_t mode);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    bool isWritten() const { return mIsWritten; }

    /// Puts it in the place of a file, at once.
    bool replace(const std::filesystem::path& file);
    enum class Placing { Placed, Taken, Failed };
    /// Gives it a name that nobody has; `Taken` when somebody has it.
    Placing placeAs(const std::filesystem::path& file);

    /// Whether a file's name is one of these.
    static bool isName(std::string_view name);

  private:
    Placing reserveAndReplace(const std::filesystem::path& file);
    std::filesystem::path mFile;
    bool mIsWritten = false;
};

/// Takes the folder for one saver at a time, whether threads or processes; ends with its process. Waits at most half a
/// minute.
class FolderLock {
  public:
    explicit FolderLock(const std::filesystem::path& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    enum class State { Locked, Busy, Unsupported, Unreadable };
    State state() const { return mState; }

  private:
    int mFolder = -1;
    State mState = State::Unreadable;
};
