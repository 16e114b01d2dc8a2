#include "Services/WebFingerAccount.h"

#include "Merging/EntryMeaning.h"
#include "QVPlatform/DomainName.h"
#include "VCard/VCardEncoding.h"

#include <algorithm>

namespace {

/// RFC 5321, 4.5.3.1.1, and as much again for the quoting.
constexpr std::size_t kLongestUser = 128;

/// What only quotes allow in the part before the "@".
bool isPlain(std::string_view user) {
    return std::none_of(user.begin(), user.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte <= 0x20 || byte == 0x7F || std::string_view("\"(),:;<>@[\\]").find(c) != std::string_view::npos;
    });
}

std::optional<std::string> unquoted(std::string_view quoted) {
    std::string user;
    for (std::size_t i = 1; i + 1 < quoted.size(); ++i) {
        if (quoted[i] == '"') return std::nullopt;
        // The last character is the closing quote, which must not be escaped away.
        if (quoted[i] == '\\' && ++i + 1 >= quoted.size()) return std::nullopt;
        user += quoted[i];
    }
    return user;
}

std::optional<std::string> userOf(std::string_view part) {
    if (part.empty() || part.size() > kLongestUser) return std::nullopt;
    const bool isQuoted = part.size() > 2 && part.front() == '"' && part.back() == '"';
    if (isQuoted) return unquoted(part);
    if (!isPlain(part)) return std::nullopt;
    return std::string(part);
}

/// Every character that an acct URI has no place for as percent escapes.
std::string escapedUser(std::string_view user) {
    std::string escaped;
    for (const char c : user) {
        const bool isSubDelimiter = std::string_view("!$&'()*+,;=").find(c) != std::string_view::npos;
        escaped += isSubDelimiter ? std::string(1, c) : escapedSegment(std::string_view(&c, 1));
    }
    return escaped;
}

}  // namespace

std::optional<WebFingerAccount> accountOfAddress(std::string_view address) {
    const std::string text = trimmed(address);
    const std::size_t at = text.rfind('@');
    if (at == std::string::npos) return std::nullopt;
    auto user = userOf(std::string_view(text).substr(0, at));
    auto domain = qv::asciiDomainName(std::string_view(text).substr(at + 1));
    if (!user || !domain) return std::nullopt;
    return WebFingerAccount{*std::move(user), *std::move(domain)};
}

std::string webFingerQuery(const WebFingerAccount& account) {
    const std::string resource = "acct:" + escapedUser(account.user) + "@" + account.domain;
    return "/.well-known/webfinger?resource=" + escapedSegment(resource);
}
