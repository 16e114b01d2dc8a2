#include "Support/ProgramFinder.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>
#include <system_error>

namespace qvhost::ProgramFinder {
namespace {

namespace fs = std::filesystem;

std::string ownName;

bool isProgram(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error) && ::access(path.c_str(), X_OK) == 0;
}

std::optional<fs::path> findInPath(const std::string& name) {
    const char* variable = std::getenv("PATH");
    std::string_view folders = variable != nullptr ? variable : "";
    while (!folders.empty()) {
        const std::string_view folder = folders.substr(0, folders.find(':'));
        // An empty entry means the working folder, which is not where programs of ours are looked for.
        if (!folder.empty() && isProgram(fs::path(folder) / name)) return fs::path(folder) / name;
        folders.remove_prefix(std::min(folder.size() + 1, folders.size()));
    }
    return std::nullopt;
}

/// Where this program itself is: as the system says, else as it was called.
std::optional<fs::path> ownPath() {
    std::error_code error;
    const fs::path said = fs::read_symlink("/proc/self/exe", error);
    if (!error) return said;
    if (ownName.find('/') != std::string::npos) return fs::canonical(ownName, error);
    return findInPath(ownName);
}

}  // namespace

void setOwnName(const char* name) {
    ownName = name != nullptr ? name : "";
}

std::optional<fs::path> find(const std::string& name) {
    if (const auto own = ownPath(); own && isProgram(own->parent_path() / name)) return own->parent_path() / name;
    return findInPath(name);
}

}  // namespace qvhost::ProgramFinder
