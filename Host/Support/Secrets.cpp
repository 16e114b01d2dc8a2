#include "Support/Secrets.h"

#include "Support/FileReading.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace qvhost::Secrets {
namespace {

using Texts = std::vector<std::string>;

constexpr std::size_t kMaximumFileSize = 8192;

Failure refused(const std::string& where, const std::string& why, const Source& source) {
    return {ExitStatus::WrongCall, where + " " + why + ". Put there " + source.whatIsNeeded + "."};
}

bool hasControlCharacter(const std::string& text) {
    return std::any_of(text.begin(), text.end(), [](char character) {
        return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
    });
}

bool isUsable(const std::string& text) {
    return !text.empty() && !hasControlCharacter(text);
}

/// The lines without their ends; the one after a last line break is none.
Texts linesOf(std::string_view text) {
    Texts lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines.emplace_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

Result<std::optional<Texts>> fromFile(const Source& source) {
    const Result<qv::Data> data = readFile(*source.file, kMaximumFileSize);
    if (!data) return data.failure();
    Texts lines = linesOf(std::string(data->begin(), data->end()));
    const std::string where = "The file \"" + *source.file + "\"";
    if (lines.size() != source.variables.size()) {
        const std::string count = std::to_string(lines.size());
        return refused(where, "holds " + count + (lines.size() == 1 ? " line" : " lines"), source);
    }
    if (!std::all_of(lines.begin(), lines.end(), isUsable))
        return refused(where, "holds an empty line or control characters", source);
    return std::optional(std::move(lines));
}

Result<std::optional<Texts>> fromEnvironment(const Source& source) {
    Texts texts;
    std::string missing;
    for (const char* variable : source.variables) {
        const char* value = std::getenv(variable);
        if (value == nullptr) {
            missing = variable;
        } else if (isUsable(value)) {
            texts.emplace_back(value);
        } else {
            return refused(std::string("The environment variable ") + variable, "is empty or holds control characters",
                           source);
        }
    }
    if (texts.empty()) return std::optional<Texts>();
    if (missing.empty()) return std::optional(std::move(texts));
    return Failure{ExitStatus::WrongCall, "The environment variable " + missing +
                                              " is not set, but the one that belongs to it is. Set both or neither."};
}

}  // namespace

Result<std::optional<std::vector<std::string>>> read(const Source& source) {
    return source.file ? fromFile(source) : fromEnvironment(source);
}

}  // namespace qvhost::Secrets
