#include "CardDAV/DAVAddress.h"

#include "Merging/EntryMeaning.h"
#include "QVPlatform/MD5.h"
#include "QVPlatform/Text.h"
#include "VCard/VCardEncoding.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr std::string_view kSuffix = ".vcf";

/// Addresses of the own machine, as they are written. A name that begins like one is none.
bool isLoopback(const std::string& host) {
    const bool isNumeric = host.find_first_not_of("0123456789.") == std::string::npos;
    return host == "::1" || qv::Text::lowercased(host) == "localhost" || (isNumeric && host.starts_with("127."));
}

/// Scheme, user information, host and port.
std::string originOf(const std::string& address) {
    return address.substr(0, address.find_first_of("/?#", address.find("://") + 3));
}

std::string lastSegment(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

/// Servers keep such names as names of files, and programs in front of them read escaped slashes as slashes.
bool isSafeName(const std::string& UID) {
    const auto isHarmless = [](char c) {
        return static_cast<unsigned char>(c) >= ' ' && c != 0x7F && c != '/' && c != '\\';
    };
    constexpr std::size_t kLongest = 120;
    return !UID.empty() && UID.size() <= kLongest && UID.front() != '.' &&
           std::all_of(UID.begin(), UID.end(), isHarmless);
}

}  // namespace

std::optional<qv::URL> serverAddress(const std::string& text, bool allowsClearText, std::string& problem) {
    std::string address = trimmed(text);
    if (address.find("://") == std::string::npos) address.insert(0, "https://");
    const auto url = qv::URL::URLWithString(address);
    const bool isSecure = url && url->scheme() == "https";
    if (!url || url->host().empty() || !(isSecure || url->scheme() == "http")) {
        problem = "The address of the address book is no https address";
    } else if (originOf(address).find('@') != std::string::npos) {
        problem = "The address of the address book holds a user name; give it apart from the address";
    } else if (address.find_first_of("?#") != std::string::npos) {
        problem = "The address of the address book has a query, which no collection has";
    } else if (!isSecure && !allowsClearText && !isLoopback(url->host())) {
        problem = hostOf(*url) + ": the password would go there in clear text; use https";
    } else {
        return url->path().empty() ? asCollection(*url) : url;
    }
    return std::nullopt;
}

qv::URL asCollection(const qv::URL& url) {
    const std::string& text = url.absoluteString();
    return text.ends_with('/') ? url : qv::URL::URLWithString(text + "/").value_or(url);
}

std::string plainPath(const qv::URL& url) {
    return withoutPercentEscapes(url.path());
}

bool isMember(const qv::URL& collection, const qv::URL& member) {
    const std::string folder = plainPath(asCollection(collection));
    const std::string path = plainPath(member);
    if (!collection.isSameOriginAs(member) || !path.starts_with(folder)) return false;
    const std::string name = path.substr(folder.size());
    return !name.empty() && name != "." && name != ".." && name.find('/') == std::string::npos;
}

qv::URL addressOfNewCard(const qv::URL& collection, const std::string& UID) {
    const std::string name = isSafeName(UID) ? escapedSegment(UID) : qv::lowerHexMD5(qv::Data(UID.begin(), UID.end()));
    const qv::URL folder = asCollection(collection);
    return qv::URL::URLWithString(folder.absoluteString() + name + std::string(kSuffix)).value_or(folder);
}

std::string nameOfCard(const qv::URL& card) {
    std::string name = lastSegment(plainPath(card));
    if (qv::Text::lowercased(name).ends_with(kSuffix)) name.resize(name.size() - kSuffix.size());
    return name;
}

std::string hostOf(const qv::URL& url) {
    const std::string origin = originOf(url.absoluteString());
    const std::size_t at = origin.rfind('@');
    return at == std::string::npos ? origin : url.scheme() + "://" + origin.substr(at + 1);
}
