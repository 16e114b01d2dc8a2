#include "Codes/MECard.h"

#include "Text/Letters.h"

#include <algorithm>
#include <string>

namespace qv::recognition {
namespace {

constexpr std::string_view kStart = "mecard:";

/// The parts of a text at a sign that no backslash stands before; the backslashes stay.
std::vector<std::string> divided(std::string_view text, char sign) {
    std::vector<std::string> parts(1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size()) {
            parts.back() += text[i];
            parts.back() += text[++i];
        } else if (text[i] == sign) {
            parts.emplace_back();
        } else {
            parts.back() += text[i];
        }
    }
    return parts;
}

std::string plain(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size()) ++i;
        result += text[i];
    }
    return result;
}

std::string joined(const std::vector<std::string>& parts, std::string_view between) {
    std::string text;
    for (const auto& part : parts) {
        const std::string value = simplified(plain(part));
        if (value.empty()) continue;
        if (!text.empty()) text += between;
        text += value;
    }
    return text;
}

bool isEastAsianText(const std::string& text) {
    const auto points = codePoints(text);
    return std::any_of(points.begin(), points.end(), isEastAsian);
}

/// Family name first, parted by a comma; written in the order of its script.
std::string nameOf(const std::string& value) {
    auto parts = divided(value, ',');
    if (parts.size() < 2 || isEastAsianText(value)) return joined(parts, " ");
    std::rotate(parts.begin(), parts.begin() + 1, parts.end());
    return joined(parts, " ");
}

void add(const std::string& key, const std::string& value, std::vector<CodeField>& fields) {
    if (key == "n") fields.push_back({FieldType::Name, nameOf(value)});
    if (key == "org") fields.push_back({FieldType::Company, plain(value)});
    if (key == "title") fields.push_back({FieldType::Title, plain(value)});
    if (key == "tel") fields.push_back({FieldType::Phone, plain(value), true});
    if (key == "email") fields.push_back({FieldType::Email, plain(value)});
    if (key == "url") fields.push_back({FieldType::URL, plain(value)});
    if (key == "adr") fields.push_back({FieldType::Address, joined(divided(value, ','), ", ")});
}

}  // namespace

bool isMECard(std::string_view code) {
    return startsWith(folded(code.substr(0, kStart.size())), kStart);
}

std::vector<CodeField> readMECard(std::string_view code) {
    std::vector<CodeField> fields;
    for (const auto& entry : divided(code.substr(std::min(code.size(), kStart.size())), ';')) {
        const auto colon = entry.find(':');
        if (colon != std::string::npos) add(foldedKey(entry.substr(0, colon)), entry.substr(colon + 1), fields);
    }
    return fields;
}

}  // namespace qv::recognition
