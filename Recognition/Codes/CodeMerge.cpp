#include "Codes/CodeMerge.h"

#include "Fields/Internet.h"
#include "Fields/NumberingPlan.h"
#include "Text/Letters.h"

#include <algorithm>
#include <string>

namespace qv::recognition {
namespace {

constexpr int kSubscriberDigits = 7;  // what national and international spelling of a number share

bool isNumber(FieldType type) {
    return type == FieldType::Phone || type == FieldType::Mobile || type == FieldType::Fax;
}

std::string digitsOf(const std::string& text) {
    std::string digits;
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits), [](char c) { return c >= '0' && c <= '9'; });
    return digits;
}

std::string tail(const std::string& text, std::size_t count) {
    return text.substr(text.size() - std::min(text.size(), count));
}

bool isSameNumber(const std::string& a, const std::string& b) {
    const std::string first = tail(digitsOf(a), kSubscriberDigits);
    const std::string second = tail(digitsOf(b), kSubscriberDigits);
    return first.size() == second.size() && !first.empty() && first == second;
}

/// A share of edits that misreading explains.
bool isAlike(const std::string& a, const std::string& b, std::size_t lettersPerEdit) {
    const std::size_t longer = std::max(a.size(), b.size());
    const int allowed = static_cast<int>(longer / lettersPerEdit);
    return !a.empty() && !b.empty() && editDistance(a, b, allowed) <= allowed;
}

bool isSame(const Field& read, const CodeField& said) {
    if (isNumber(said.type)) return isNumber(read.type) && isSameNumber(read.text, said.text);
    if (read.type != said.type) return false;
    if (said.type == FieldType::URL) return isAlike(hostOf(read.text), hostOf(said.text), 6);
    return isAlike(foldedKey(read.text), foldedKey(said.text), said.type == FieldType::Email ? 6 : 4);
}

/// Of these a card has one, and the code says which.
bool isSingle(FieldType type) {
    return type == FieldType::Name || type == FieldType::Company || type == FieldType::Title ||
           type == FieldType::Department;
}

Field sureField(const CodeField& said, const Box& box) {
    const bool mobile = said.isAnyNumber && said.type == FieldType::Phone && planAdvice(said.text, "").mobile;
    Field field{mobile ? FieldType::Mobile : said.type, said.text, box, 100, 1};
    field.isSure = true;
    return field;
}

/// "www.acme.com" printed and "http://www.acme.com/" in the code are one link, and the print is what people read.
std::string textOf(const Field& read, const CodeField& said) {
    const auto bare = [](const std::string& link) { return trimmed(link.substr(link.find("://") + 3), "/"); };
    const bool onlyScheme = said.type == FieldType::URL && said.text.find("://") != std::string::npos &&
                            folded(bare(said.text)) == folded(read.text);
    return onlyScheme ? read.text : said.text;
}

}  // namespace

std::vector<Field> withCode(std::vector<Field> read, const std::vector<CodeField>& code, const Box& codeBox) {
    std::vector<Field> merged;
    for (const auto& said : code) {
        const auto same =
            std::find_if(read.begin(), read.end(), [&said](const auto& field) { return isSame(field, said); });
        if (same == read.end()) {
            merged.push_back(sureField(said, codeBox));
            continue;
        }
        merged.push_back(sureField({said.isAnyNumber ? same->type : said.type, textOf(*same, said), false}, same->box));
        read.erase(same);
    }
    for (auto& field : read) {
        const bool decided = isSingle(field.type) && std::any_of(code.begin(), code.end(), [&field](const auto& said) {
                                 return said.type == field.type;
                             });
        if (!decided) merged.push_back(std::move(field));
    }
    std::stable_sort(merged.begin(), merged.end(), [](const Field& a, const Field& b) { return a.box.y < b.box.y; });
    return merged;
}

}  // namespace qv::recognition
