#include "Page/ZipFile.h"

#include <zip.h>

#include <array>
#include <string>
#include <string_view>
#include <system_error>

namespace qvhost {
namespace {

namespace fs = std::filesystem;

Failure notWritten(const std::string& why) {
    return {ExitStatus::NotWritten, "The ZIP file could not be put together: " + why + ". Make room and try again."};
}

/// Pictures are compressed as they are.
bool isCompressed(const fs::path& file) {
    constexpr std::array<std::string_view, 5> kEndings = {".jpg", ".png", ".webp", ".heic", ".zip"};
    for (const std::string_view ending : kEndings) {
        if (file.extension() == ending) return true;
    }
    return false;
}

bool add(zip_t* archive, const fs::path& file, const std::string& name) {
    zip_source_t* source = zip_source_file(archive, file.c_str(), 0, -1);
    if (source == nullptr) return false;
    const zip_int64_t index = zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
        zip_source_free(source);
        return false;
    }
    const auto position = static_cast<zip_uint64_t>(index);
    return zip_set_file_compression(archive, position, isCompressed(file) ? ZIP_CM_STORE : ZIP_CM_DEFLATE, 0) == 0;
}

bool addAll(zip_t* archive, const fs::path& folder) {
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
        const fs::path& path = entry->path();
        if (entry->is_regular_file(error) && !add(archive, path, path.lexically_relative(folder).generic_string()))
            return false;
    }
    return !error;
}

}  // namespace

std::optional<Failure> writeZip(const fs::path& file, const fs::path& folder) {
    int problem = 0;
    zip_t* archive = zip_open(file.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &problem);
    if (archive == nullptr) return notWritten("the file could not be opened");
    // The files are read when it is closed.
    if (addAll(archive, folder) && zip_close(archive) == 0) return std::nullopt;
    const Failure failure = notWritten(zip_strerror(archive));
    zip_discard(archive);
    return failure;
}

}  // namespace qvhost
