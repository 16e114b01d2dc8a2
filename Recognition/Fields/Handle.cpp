#include "Fields/Handle.h"

#include "Text/Letters.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

namespace qv::recognition {
namespace {

bool isHandleByte(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '.' ||
           c == '-' || c == ':';
}

bool isHandle(std::string_view text, std::size_t longest) {
    return text.size() >= 3 && text.size() <= longest && std::all_of(text.begin(), text.end(), isHandleByte) &&
           countLetters(text) >= 2;
}

bool isAtHandle(const std::string& text) {
    return text.size() >= 3 && text.front() == '@' && isHandle(std::string_view(text).substr(1), 16) &&
           text.find('.') == std::string::npos;
}

std::optional<FieldType> service(std::string_view label) {
    const std::string key = foldedKey(label);
    if (key == "skype" || key == "skypeid" || key == "skypename") return FieldType::Skype;
    if (key == "twitter" || key == "tw" || key == "twitterhandle") return FieldType::Twitter;
    return std::nullopt;
}

/// "skype:jane.doe" in one word.
std::optional<Claim> labelledInside(const TextLine& line, std::size_t i) {
    const std::string& text = line.words[i].text;
    const auto colon = text.find(':');
    if (colon == std::string::npos) return std::nullopt;
    const auto type = service(std::string_view(text).substr(0, colon));
    const std::string handle = text.substr(colon + 1);
    if (!type || !isHandle(trimmed(handle, "@"), 40)) return std::nullopt;
    return Claim{*type, i, i + 1, handle, 0.95F};
}

std::optional<Claim> labelledBefore(const TextLine& line, std::size_t i) {
    if (i + 1 >= line.words.size()) return std::nullopt;
    const auto type = service(line.words[i].text);
    const bool hasID = i + 2 < line.words.size() && foldedKey(line.words[i + 1].text) == "id";
    const std::size_t at = hasID ? i + 2 : i + 1;
    const std::string handle = trimmed(line.words[at].text, ":,;");
    if (!type || !isHandle(trimmed(handle, "@"), 40)) return std::nullopt;
    return Claim{*type, i, at + 1, handle, 0.95F};
}

std::optional<Claim> claimAt(const TextLine& line, std::size_t i) {
    if (auto claim = labelledInside(line, i)) return claim;
    if (auto claim = labelledBefore(line, i)) return claim;
    if (isAtHandle(line.words[i].text)) return Claim{FieldType::Twitter, i, i + 1, line.words[i].text, 0.8F};
    return std::nullopt;
}

}  // namespace

bool isHandleLabel(const TextLine& line) {
    return line.words.size() <= 2 && service(line.text()).has_value();
}

std::vector<Claim> findHandles(const TextLine& line) {
    std::vector<Claim> claims;
    for (std::size_t i = 0; i < line.words.size(); ++i) {
        if (auto claim = claimAt(line, i)) {
            i = claim->end - 1;
            claims.push_back(*claim);
        }
    }
    return claims;
}

}  // namespace qv::recognition
