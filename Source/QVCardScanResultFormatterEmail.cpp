#include "QVCardScan/QVCardScanResultFormatter.h"
#include "QVCardScanTopLevelDomains.h"
#include "QVPlatform/Log.h"
#include "QVPlatform/RangeError.h"
#include "QVPlatform/Text.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr std::size_t kLongestTopLevelDomain = 6;

bool isAllowedInEmail(char character) {
    const bool isLetter = (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
    const bool isDigit = character >= '0' && character <= '9';
    return isLetter || isDigit || std::string_view(".+-_@").find(character) != std::string_view::npos;
}

// Its place in the list, which is sorted; the list's end when it is unknown.
auto findTopLevelDomain(std::string_view label) {
    const auto& list = QVCardScanTopLevelDomains;
    const auto place = std::lower_bound(list.begin(), list.end(), label);
    return place != list.end() && *place == label ? place : list.end();
}

bool isTopLevelDomain(std::string_view label) {
    return findTopLevelDomain(label) != QVCardScanTopLevelDomains.end();
}

// The first in the list's order, not the longest. Each length has one candidate.
std::string_view firstTopLevelDomainEnding(std::string_view label) {
    auto first = QVCardScanTopLevelDomains.end();
    for (std::size_t length = 1; length <= std::min(label.size(), kLongestTopLevelDomain); ++length) {
        first = std::min(first, findTopLevelDomain(label.substr(label.size() - length)));
    }
    return first == QVCardScanTopLevelDomains.end() ? std::string_view() : *first;
}

// All that is searched for and put in is ASCII, so bytes will do: what surrounds it is never looked at.
std::string withTLDRepaired(const std::string& email) {
    std::string result = email;
    const std::size_t at = email.rfind('@');
    if (at == std::string::npos) return result;
    const std::size_t domainStart = at + 1;
    std::string domain = email.substr(domainStart);
    if (domain.empty()) return result;
    const std::size_t dot = domain.rfind('.');
    const std::size_t labelStart = dot == std::string::npos ? 0 : dot + 1;
    std::string label = domain.substr(labelStart);
    if (label.empty() || isTopLevelDomain(label)) return result;
    const std::string_view entry = firstTopLevelDomainEnding(label);
    if (entry.empty()) return result;
    label.insert(label.size() - entry.size(), ".");
    domain.replace(labelStart, std::string::npos, label);
    result.replace(domainStart, std::string::npos, domain);
    return result;
}

}  // namespace

QVString QVCardScanResultFormatter::normalizedEmailForEmail(const QVString& email) {
    QVString result = sanitizeEmailString(email);
    if (result) result = qv::Text::lowercased(std::string_view(*result));
    return fixWrongTLDIfAny(result);
}

QVString QVCardScanResultFormatter::sanitizeEmailString(const QVString& string) {
    if (!string) return std::nullopt;
    std::string result;
    result.reserve(string->size());
    std::copy_if(string->begin(), string->end(), std::back_inserter(result), isAllowedInEmail);
    // No white space is allowed, so none is left to trim at the ends.
    return qv::Text::lowercased(std::string_view(result));
}

QVString QVCardScanResultFormatter::fixWrongTLDIfAny(const QVString& email) {
    if (!email) return std::nullopt;
    return withTLDRepaired(*email);
}

void QVCardScanResultFormatter::replaceMutableString(std::string& mutableString, std::size_t fromIndex,
                                                     const std::string& withString) {
    try {
        std::u16string text = qv::Text::utf16(mutableString);
        // Past the end the length wraps around, and the range with it leaves the text.
        qv::Text::replaceRange(text, fromIndex, text.size() - fromIndex, qv::Text::utf16(withString));
        mutableString = qv::Text::utf8(text);
    } catch (const qv::RangeError& exception) {
        qv::Log::write("WARNING: Exception %@", exception.what());
    }
}
