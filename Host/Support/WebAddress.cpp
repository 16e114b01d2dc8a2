#include "Support/WebAddress.h"

#include "QVPlatform/URL.h"

#include <optional>

namespace qvhost::WebAddress {
namespace {

/// Whether something stands before the host, be the address otherwise right or not.
bool hasCredentials(const std::string& url) {
    const std::size_t scheme = url.find("://");
    const std::size_t start = scheme == std::string::npos ? 0 : scheme + 3;
    const std::size_t end = url.find_first_of("/?#", start);
    return url.substr(start, end - start).find('@') != std::string::npos;
}

}  // namespace

std::string objectionTo(const std::string& url, const std::string& example, const std::string& advice) {
    if (hasCredentials(url)) return "an address takes no user name or password; " + advice + ".";
    const std::optional<qv::URL> address = qv::URL::URLWithString(url);
    const std::string scheme = address ? address->scheme() : "";
    if (scheme == "http" || scheme == "https") return "";
    return "an address such as " + example + " is needed here, not \"" + url + "\".";
}

}  // namespace qvhost::WebAddress
