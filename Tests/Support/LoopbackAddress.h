#pragma once

#include <netinet/in.h>

#include <cstdint>

namespace testsupport {

/// 127.0.0.1 and the port; 0: one of the system's choice.
inline sockaddr_in loopbackAddress(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    return address;
}

}  // namespace testsupport
