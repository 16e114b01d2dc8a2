#include "Codes/ContactCode.h"

#include "Codes/MECard.h"
#include "Codes/VCard.h"
#include "Text/Letters.h"

#include <algorithm>
#include <set>

namespace qv::recognition {
namespace {

constexpr std::size_t kLongestCode = 8192;
constexpr int kLongestValue = 300;  // characters
constexpr int kMostOfOneKind = 6;

bool isControl(char32_t c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029 || c == 0xFEFF || c == 0xFFFD;
}

std::string tidied(const std::string& text) {
    auto points = codePoints(text);
    std::replace_if(points.begin(), points.end(), isControl, U' ');
    return trimmed(simplified(toUTF8(points)), ", ");
}

bool isNumber(FieldType type) {
    return type == FieldType::Phone || type == FieldType::Mobile || type == FieldType::Fax;
}

bool isUsable(const CodeField& field) {
    const int size = length(field.text);
    if (size == 0 || size > kLongestValue) return false;
    if (isNumber(field.type)) return countDigits(field.text) >= 3;
    if (field.type == FieldType::Email) return field.text.find('@') != std::string::npos;
    return true;
}

}  // namespace

std::vector<CodeField> contactIn(std::string_view code) {
    if (code.size() > kLongestCode) return {};
    auto found = isMECard(code) ? readMECard(code) : isVCard(code) ? readVCard(code) : std::vector<CodeField>();
    std::vector<CodeField> kept;
    std::multiset<FieldType> kinds;
    for (auto& field : found) {
        field.text = tidied(field.text);
        const std::size_t most = field.type == FieldType::Name ? 1 : kMostOfOneKind;
        if (!isUsable(field) || kinds.count(field.type) >= most) continue;
        if (std::find(kept.begin(), kept.end(), field) != kept.end()) continue;
        kinds.insert(field.type);
        kept.push_back(std::move(field));
    }
    return kept;
}

}  // namespace qv::recognition
