#include "Fields/Internet.h"

#include "Fields/Words/Words.h"
#include "Text/Letters.h"

#include <algorithm>
#include <array>
#include <vector>

namespace qv::recognition {
namespace {

constexpr std::size_t kLongestHost = 253;
// Endings that are worth looking for where the dot before them was lost: long enough not to be part of a word.
constexpr std::array<std::string_view, 7> kGluedEndings = {"com", "net", "org", "edu", "gov", "info", "biz"};

bool isHostByte(char c) {
    return c < 0 || c == '-' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

std::vector<std::string> labels(std::string_view host) {
    std::vector<std::string> parts(1);
    for (const char c : host) {
        if (c == '.') {
            parts.emplace_back();
        } else {
            parts.back().push_back(c);
        }
    }
    return parts;
}

bool isLabel(const std::string& label) {
    return !label.empty() && label.size() <= 63 && std::all_of(label.begin(), label.end(), isHostByte) &&
           label.front() != '-' && label.back() != '-';
}

std::string withDots(std::string_view text) {
    std::string host(text);
    std::replace(host.begin(), host.end(), ',', '.');
    return host;
}

/// "acmecom" → "acme.com": only for a text without any dot, where a top-level domain has to be somewhere.
std::string withLostDot(const std::string& host) {
    const std::string lower = folded(host);
    if (host.find('.') != std::string::npos || lower.size() != host.size()) return host;
    for (const auto ending : kGluedEndings) {
        if (endsWith(lower, ending) && lower.size() >= ending.size() + 3) {
            const std::size_t cut = host.size() - ending.size();
            return host.substr(0, cut) + '.' + host.substr(cut);
        }
    }
    return host;
}

bool isSecondLevel(const std::string& label) {
    return label == "co" || label == "com" || label == "org" || label == "net" || label == "ac" || label == "edu" ||
           label == "gov" || label == "ne" || label == "or" || label == "go";
}

}  // namespace

bool isHostName(std::string_view text) {
    const auto host = text.substr(0, text.find('/'));
    const auto parts = labels(host);
    return host.size() <= kLongestHost && parts.size() >= 2 && std::all_of(parts.begin(), parts.end(), isLabel) &&
           words::isTopLevelDomain(folded(parts.back()));
}

std::optional<std::string> hostName(std::string_view text) {
    const std::string host = withLostDot(withDots(trimmed(text, ".,;:")));
    if (!isHostName(host) || host.find('/') != std::string::npos) return std::nullopt;
    return host;
}

std::string registeredLabel(std::string_view host) {
    auto parts = labels(folded(host));
    if (parts.size() < 2) return {};
    parts.pop_back();
    if (parts.size() >= 2 && isSecondLevel(parts.back())) parts.pop_back();
    return parts.back();
}

std::string hostOf(std::string_view emailOrLink) {
    std::string host = folded(emailOrLink);
    if (const auto at = host.rfind('@'); at != std::string::npos) host.erase(0, at + 1);
    if (const auto scheme = host.find("://"); scheme != std::string::npos) host.erase(0, scheme + 3);
    host.erase(std::min(host.find_first_of("/?:"), host.size()));
    if (startsWith(host, "www.")) host.erase(0, 4);
    return host;
}

std::string countryOfHost(std::string_view host) {
    const auto parts = labels(folded(host));
    const std::string& ending = parts.back();
    static constexpr std::array<std::string_view, 9> general = {"io", "ai", "me", "tv", "cc", "co", "eu", "fm", "ly"};
    if (parts.size() < 2 || ending.size() != 2 || std::find(general.begin(), general.end(), ending) != general.end())
        return {};
    if (ending == "uk") return "GB";
    std::string country = ending;
    std::transform(country.begin(), country.end(), country.begin(),
                   [](char c) { return static_cast<char>(c - 'a' + 'A'); });
    return country;
}

}  // namespace qv::recognition
