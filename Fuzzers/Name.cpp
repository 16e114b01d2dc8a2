// Repair of person names. The whole repair may change what it made itself ("John Smith Jr Jr"); its steps may not.

#include "QVCardScan/QVCardScanResultFormatter.h"
#include "Support/Input.h"
#include "Support/Require.h"

using fuzzing::require;
using Formatter = QVCardScanResultFormatter;

namespace {

bool isRemoved(char16_t unit) {
    return qv::Text::isPunctuation(unit) && unit != '&' && unit != '-' && unit != '\'';
}

void checkSanitized(const std::string& text) {
    const std::string once = *Formatter::sanitizeNameString(text);
    require(Formatter::sanitizeNameString(once) == once, "what is sanitized stays as it is");
    const std::u16string units = qv::Text::utf16(once);
    for (const char16_t unit : units)
        require(!isRemoved(unit), "a sanitized name has no punctuation");
    require(qv::Text::trimWhitespace(units).size() == units.size(), "a sanitized name has no blanks at its ends");
}

void checkSpaces(const std::string& text) {
    const std::string once = *Formatter::stripDoubleSpaceFrom(text);
    require(once.find("  ") == std::string::npos, "no two spaces are left");
    require(Formatter::stripDoubleSpaceFrom(once) == once, "what is stripped stays as it is");
}

void checkInitials(const std::string& text) {
    const std::string dotted = *Formatter::recoverMiddleNameDotString(text);
    require(Formatter::recoverMiddleNameDotString(dotted) == dotted, "initials with dots stay as they are");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const std::string text = fuzzing::textOf(bytes, count);
    const QVString name = Formatter::normalizedNameForName(text);
    require(name.has_value(), "a name is there when its text is");
    require(fuzzing::isUTF8(*name), "a name is UTF-8");
    require(name->find("  ") == std::string::npos, "a name has no two spaces side by side");
    checkSanitized(text);
    checkSpaces(text);
    checkInitials(text);
    return 0;
}
