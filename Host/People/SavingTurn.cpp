#include "People/SavingTurn.h"

#include <fcntl.h>
#include <sys/file.h>

#include <chrono>
#include <system_error>
#include <thread>

namespace qvhost {
namespace {

constexpr std::chrono::seconds kLongestWait{30};
constexpr std::chrono::milliseconds kPause{20};

std::filesystem::path folderAbove(const std::filesystem::path& folder) {
    std::error_code ignored;
    const std::filesystem::path whole = std::filesystem::weakly_canonical(folder, ignored);
    return whole.has_filename() ? whole.parent_path() : whole.parent_path().parent_path();
}

}  // namespace

SavingTurn::SavingTurn(const std::filesystem::path& folder) {
    if (folder.empty()) return;
    mFolderAbove = FileDescriptor(::open(folderAbove(folder).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!mFolderAbove.isOpen()) return;
    const auto end = std::chrono::steady_clock::now() + kLongestWait;
    while (::flock(mFolderAbove.number(), LOCK_EX | LOCK_NB) != 0 && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(kPause);
}

}  // namespace qvhost
