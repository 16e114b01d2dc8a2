#include "QVPlatform/Bundle.h"

#include <dlfcn.h>
#include <link.h>

#include <array>
#include <functional>
#include <map>
#include <mutex>
#include <system_error>
#include <utility>

namespace qv {

namespace fs = std::filesystem;

namespace {

/// Never destroyed: threads may still look resources up while the process ends.
struct State {
    std::mutex mutex;
    fs::path folder;
    /// Where the resources of a loaded file were found, by its name.
    std::map<std::string, fs::path, std::less<>> found;
};

State& state() {
    static State* const shared = new State;
    return *shared;
}

fs::path replacementFolder() {
    const std::lock_guard lock(state().mutex);
    return state().folder;
}

// Looking takes many times longer than reading a note's template does, so what was found is kept.
fs::path foundFolder(std::string_view name) {
    const std::lock_guard lock(state().mutex);
    const auto entry = state().found.find(name);
    return entry == state().found.end() ? fs::path() : entry->second;
}

void keepFoundFolder(std::string_view name, const fs::path& folder) {
    const std::lock_guard lock(state().mutex);
    state().found.insert_or_assign(std::string(name), folder);
}

/// What the loader calls the file that holds an address; empty when none does, or when it is the program.
std::string_view nameOfFileHoldingAddress(const void* address) {
#ifdef DLFO_EH_SEGMENT_TYPE
    // Finds the file alone; the other call also looks through all its symbols for the nearest.
    dl_find_object found{};
    return ::_dl_find_object(const_cast<void*>(address), &found) == 0 ? found.dlfo_link_map->l_name : "";
#else
    Dl_info info{};
    return ::dladdr(address, &info) != 0 && info.dli_fname ? info.dli_fname : "";
#endif
}

/// The file of a library or program that the loader calls so, without links.
fs::path fileNamed(std::string_view name) {
    std::error_code error;
    const fs::path named(name);
    if (named.has_parent_path()) {
        if (fs::path file = fs::canonical(named, error); !error) return file;
    }
    // A program's name is what its caller put into the argument list: a bare word, or relative to a folder left since.
    return fs::canonical("/proc/self/exe", error);
}

/// A library lies in `lib` or `lib/<architecture>`, a program in `bin`.
fs::path installedFolder(const fs::path& file) {
    const fs::path above = file.parent_path().parent_path();
    std::error_code error;
    for (const fs::path& prefix : {above, above.parent_path()}) {
        if (fs::path folder = prefix / "share" / "QVCardScan"; fs::is_directory(folder, error)) return folder;
    }
    return {};
}

/// Only what lies in the folder of the build may use the source tree.
bool isInsideBuild(const fs::path& file) {
    std::error_code error;
    const fs::path build = fs::canonical(QV_BUILD_FOLDER, error);
    if (error) return false;
    const fs::path relative = file.lexically_relative(build);
    return !relative.empty() && *relative.begin() != "..";
}

}  // namespace

Bundle Bundle::bundleForAddress(const void* address) {
    if (fs::path folder = replacementFolder(); !folder.empty()) return Bundle(std::move(folder));
    const std::string_view name = nameOfFileHoldingAddress(address);
    if (fs::path folder = foundFolder(name); !folder.empty()) return Bundle(std::move(folder));
    const fs::path file = fileNamed(name);
    fs::path folder = installedFolder(file);
    if (folder.empty() && isInsideBuild(file)) folder = QV_SOURCE_RESOURCES;
    if (folder.empty()) return Bundle(file.parent_path().parent_path() / "share" / "QVCardScan");
    keepFoundFolder(name, folder);
    return Bundle(std::move(folder));
}

fs::path Bundle::pathForResource(std::string_view name, std::string_view ofType) const {
    std::string file(name);
    if (!ofType.empty()) file.append(".").append(ofType);
    return mFolder / file;
}

std::optional<fs::path> Bundle::pathForImageResource(std::string_view name) const {
    constexpr std::array<std::string_view, 7> kTypes = {"png", "jpg", "jpeg", "tif", "tiff", "webp", "heic"};
    for (const std::string_view type : kTypes) {
        std::error_code error;
        if (fs::path file = pathForResource(name, type); fs::is_regular_file(file, error)) return file;
    }
    return std::nullopt;
}

void Bundle::setResourceFolder(fs::path folder) {
    const std::lock_guard lock(state().mutex);
    state().folder.swap(folder);
}

}  // namespace qv
