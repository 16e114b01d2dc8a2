#include "Page/PageGate.h"

#include <algorithm>
#include <string_view>

namespace qvhost {
namespace {

constexpr std::string_view kInside = "api/";

/// The name or number of a `Host` without its port; empty when the port is another.
std::string_view nameIn(std::string_view host, std::uint16_t port) {
    const std::string ending = ":" + std::to_string(port);
    if (host.ends_with(ending)) return host.substr(0, host.size() - ending.size());
    // Browsers leave the usual port out.
    const bool hasPort = host.find(':', host.starts_with('[') ? host.find(']') + 1 : 0) != std::string_view::npos;
    return port == 80 && !hasPort ? host : std::string_view();
}

/// Numbers cannot be made to mean another machine, as names can.
bool isNumber(std::string_view name) {
    if (name.starts_with('[')) return name.ends_with(']');
    return !name.empty() &&
           std::all_of(name.begin(), name.end(), [](char c) { return c == '.' || (c >= '0' && c <= '9'); });
}

bool isFromOwnPage(const PageRequest& request) {
    return request.fetchSite.empty() || request.fetchSite == "same-origin" || request.fetchSite == "none";
}

}  // namespace

bool PageGate::isOwnHost(const std::string& host) const {
    const std::string_view name = nameIn(host, mPort);
    if (name == "127.0.0.1" || name == "localhost" || name == "[::1]") return true;
    return mIsForNetwork && isNumber(name);
}

PageGate::Entry PageGate::entryFor(const PageRequest& request) const {
    if (!isOwnHost(request.host)) return Entry::Refused;
    if (!request.origin.empty() && request.origin != "http://" + request.host) return Entry::Refused;
    std::string_view path = request.path();
    if (path == "/") return request.method == "GET" && mKey.is(request.parameter("key")) ? Entry::Door : Entry::Refused;
    if (!path.starts_with(mKey.folder())) return Entry::Refused;
    path.remove_prefix(mKey.folder().size());
    if (!path.starts_with(kInside)) return request.method == "GET" ? Entry::Files : Entry::Refused;
    return mKey.isIn(request.cookie) && isFromOwnPage(request) ? Entry::Inside : Entry::Refused;
}

}  // namespace qvhost
