#include "Recognition/RemoteServer.h"

#include "QVPlatform/URL.h"

#include <optional>

namespace qvhost {
namespace {

/// Whether a user name or password stands before the host.
bool hasCredentials(const std::string& url) {
    const std::size_t start = url.find("://");
    if (start == std::string::npos) return false;
    const std::size_t end = url.find_first_of("/?#", start + 3);
    return url.substr(start + 3, end - (start + 3)).find('@') != std::string::npos;
}

}  // namespace

std::string RemoteServer::objectionTo(const std::string& url) {
    // Arguments are seen by everybody on the machine, and addresses are logged.
    if (hasCredentials(url)) return "an address takes no user name or password; put the server's token into a file.";
    const std::optional<qv::URL> address = qv::URL::URLWithString(url);
    const std::string scheme = address ? address->scheme() : "";
    if (scheme == "http" || scheme == "https") return "";
    return "an address such as https://cards.example.com/ is needed here, not \"" + url + "\".";
}

}  // namespace qvhost
