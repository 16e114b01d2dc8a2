#include "Batch/BatchInputs.h"

#include "Batch/BatchFolder.h"
#include "Output/FileKind.h"
#include "Support/NaturalOrder.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

namespace qvhost {
namespace {

namespace fs = std::filesystem;

/// Deeper is no folder of photographs.
constexpr int kDeepest = 32;
constexpr std::array<std::string_view, 9> kEndings = {".jpg",  ".jpeg", ".jpe",  ".png", ".tif",
                                                      ".tiff", ".webp", ".heic", ".heif"};

bool isCalledPicture(const fs::path& file) {
    std::string ending = file.extension().string();
    for (char& c : ending)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return std::find(kEndings.begin(), kEndings.end(), ending) != kEndings.end();
}

bool beginsAsPicture(const fs::path& file) {
    std::array<char, 16> head{};
    std::ifstream stream(file, std::ios::binary);
    stream.read(head.data(), static_cast<std::streamsize>(head.size()));
    return FileKind::of(qv::Data(head.begin(), head.begin() + stream.gcount())).isPicture();
}

/// A picture that is damaged from its first byte on is still meant as one.
bool isPicture(const fs::path& file) {
    return isCalledPicture(file) || beginsAsPicture(file);
}

bool areInOrder(const std::vector<fs::path>& files, bool (*isBefore)(const fs::path&, const fs::path&)) {
    return std::is_sorted(files.begin(), files.end(), isBefore);
}

bool byBytes(const fs::path& one, const fs::path& other) {
    return one.native() < other.native();
}

std::string lettersAndDigits(const fs::path& file) {
    std::string text;
    for (const char c : file.native()) {
        const bool isCapital = c >= 'A' && c <= 'Z';
        const bool counts = isCapital || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || (c & 0x80) != 0;
        if (counts) text += isCapital ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return text;
}

/// Much as languages' own orders have it, which is how most shells list files.
bool byLetters(const fs::path& one, const fs::path& other) {
    return lettersAndDigits(one) < lettersAndDigits(other);
}

bool naturally(const fs::path& one, const fs::path& other) {
    return comesBefore(one.native(), other.native());
}

class Gatherer {
  public:
    void takeNamed(const std::vector<std::string>& names) {
        for (const std::string& name : names) {
            std::error_code error;
            if (fs::is_directory(name, error)) {
                takeNamedFiles();
                takeFolder(name, kDeepest);
            } else {
                mNamed.emplace_back(name);
            }
        }
        takeNamedFiles();
    }

    BatchInputs inputs;

  private:
    void takeNamedFiles() {
        std::vector<fs::path> files = std::exchange(mNamed, {});
        if (areInOrder(files, byBytes) || areInOrder(files, byLetters))
            std::stable_sort(files.begin(), files.end(), naturally);
        for (const fs::path& file : files)
            takeNamedFile(file);
    }

    void takeNamedFile(const fs::path& file) {
        struct stat status = {};
        if (::stat(file.c_str(), &status) != 0) {
            inputs.mistakes.push_back({file, "cannot be read: " + std::system_category().message(errno)});
        } else if (!S_ISREG(status.st_mode) || !isPicture(file)) {
            inputs.mistakes.push_back({file, "is no picture; give JPEG, PNG, TIFF or WebP photographs"});
        } else {
            take(file, status);
        }
    }

    void takeFolder(const fs::path& folder, int depth) {
        if (depth == 0 || BatchFolder::isOne(folder)) return;
        std::error_code error;
        std::vector<fs::path> entries;
        for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
             entry.increment(error)) {
            if (!entry->path().filename().native().starts_with('.')) entries.push_back(entry->path());
        }
        if (error) inputs.mistakes.push_back({folder, "cannot be read: " + error.message()});
        std::sort(entries.begin(), entries.end(), naturally);
        for (const fs::path& entry : entries)
            takeEntry(entry, depth);
    }

    void takeEntry(const fs::path& entry, int depth) {
        std::error_code error;
        struct stat status = {};
        if (fs::is_directory(fs::symlink_status(entry, error))) {
            takeFolder(entry, depth - 1);
        } else if (::stat(entry.c_str(), &status) == 0 && S_ISREG(status.st_mode) && isPicture(entry)) {
            take(entry, status);
        } else {
            ++inputs.skipped;
        }
    }

    void take(const fs::path& file, const struct stat& status) {
        if (mTaken.emplace(status.st_dev, status.st_ino).second) {
            inputs.pictures.push_back(file);
        } else {
            ++inputs.repeated;
        }
    }

    std::vector<fs::path> mNamed;
    std::set<std::pair<dev_t, ino_t>> mTaken;
};

}  // namespace

BatchInputs BatchInputs::gather(const std::vector<std::string>& names) {
    Gatherer gatherer;
    gatherer.takeNamed(names);
    return std::move(gatherer.inputs);
}

}  // namespace qvhost
