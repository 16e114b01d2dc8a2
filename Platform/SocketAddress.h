#pragma once

struct sockaddr;

namespace qv {

/// `isPublicAddress` for what a socket is about to connect to.
bool isPublicSocketAddress(const sockaddr& address);

}  // namespace qv
