#include "Links/NetworkLink.h"

#include "QVPlatform/Text.h"
#include "QVPlatform/URL.h"
#include "VCard/VCardEncoding.h"

#include <string_view>

bool isHostInDomain(std::string_view host, std::string_view domain) {
    return host == domain || (host.ends_with(domain) && host[host.size() - domain.size() - 1] == '.');
}

std::string networkOfLink(const std::string& link) {
    const auto url = qv::URL::URLWithString(link);
    if (!url || (url->scheme() != "http" && url->scheme() != "https")) return "";
    const std::string host = qv::Text::lowercased(url->host());
    if (isHostInDomain(host, "linkedin.com")) return "LINKEDIN";
    if (isHostInDomain(host, "facebook.com") || isHostInDomain(host, "fb.com")) return "FACEBOOK";
    return isHostInDomain(host, "twitter.com") || isHostInDomain(host, "x.com") ? "TWITTER" : "";
}

std::string handleOfLink(const std::string& link) {
    const std::size_t path = link.find_first_of("/?#", link.find("//") + 2);
    if (path == std::string::npos || link[path] != '/') return "";
    const std::size_t end = link.find_first_of("/?#", path + 1);
    return withoutPercentEscapes(link.substr(path + 1, end == std::string::npos ? end : end - path - 1));
}
