#include "Batch/ContactCSV.h"

#include "Batch/CardFields.h"

#include <algorithm>
#include <array>

namespace qvhost::ContactCSV {
namespace {

constexpr const char* kLineEnd = "\r\n";

std::string_view withoutSpace(std::string_view text) {
    constexpr std::string_view kSpace = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kSpace);
    if (first == std::string_view::npos) return "";
    return text.substr(first, text.find_last_not_of(kSpace) - first + 1);
}

bool isTelephoneNumber(std::string_view text) {
    return text.find_first_of("0123456789") != std::string_view::npos &&
           text.find_first_not_of("0123456789+-()./; ext") == std::string_view::npos;
}

/// Some of these are full-width, as Japanese and Chinese spreadsheets read them too.
bool beginsFormula(std::string_view text) {
    constexpr std::array<std::string_view, 8> kSigns = {
        "=", "+", "-", "@", "\xEF\xBC\x9D", "\xEF\xBC\x8B", "\xEF\xBC\x8D", "\xEF\xBC\xA0"};
    return std::any_of(kSigns.begin(), kSigns.end(), [&](std::string_view sign) { return text.starts_with(sign); });
}

}  // namespace

std::string cell(std::string_view text) {
    const std::string_view words = withoutSpace(text);
    std::string value = beginsFormula(words) && !isTelephoneNumber(words) ? "'" : "";
    value.append(words);
    if (value.find_first_of(",\"\r\n") == std::string::npos) return value;
    std::string quoted = "\"";
    for (const char c : value)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + "\"";
}

std::string header() {
    std::string line;
    for (const auto& field : CardFields::of({}).fields)
        line.append(field.kind).append(",");
    return line + "Folder" + kLineEnd;
}

std::string row(const CardRecord& card) {
    const CardFields fields = CardFields::of(card);
    std::string line;
    for (const auto& field : fields.fields)
        line.append(cell(fields.joined(field.kind, "; "))).append(",");
    return line + cell("cards/" + card.name) + kLineEnd;
}

}  // namespace qvhost::ContactCSV
