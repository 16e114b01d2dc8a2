#include "Answer/ResultFile.h"

#include "Output/FileKind.h"
#include "QVPlatform/Text.h"
#include "Support/FileReading.h"

#include <cstddef>
#include <optional>
#include <utility>

namespace qvhost {
namespace {

constexpr std::size_t kMaximumSize = std::size_t{16} * 1024 * 1024;

Failure isPicture(const std::string& file, const std::string& name) {
    const std::string call = file == "-" ? "FILE" : file;
    return {ExitStatus::WrongCall,
            name + " is a picture, not a recognition result. Did you mean \"qvcardscan scan " + call + "\"?"};
}

Failure isNoText(const std::string& name) {
    return {ExitStatus::WrongCall, name +
                                       " is not UTF-8 text, which a recognition result must be. "
                                       "Convert it first, for example with iconv."};
}

}  // namespace

Result<ResultFile> ResultFile::read(const std::string& file) {
    const std::string name = nameOfFile(file, /*dashIsInput=*/true);
    const Result<qv::Data> data = readFile(file, kMaximumSize, /*dashIsInput=*/true);
    if (!data) return data.failure();
    if (std::optional<std::string> text = qv::Text::stringFromUTF8(*data)) return ResultFile{*std::move(text), name};
    return FileKind::of(*data).isPicture() ? isPicture(file, name) : isNoText(name);
}

}  // namespace qvhost
