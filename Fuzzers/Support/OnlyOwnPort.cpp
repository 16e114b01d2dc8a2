#include "Support/OnlyOwnPort.h"

#include <arpa/inet.h>
#include <dlfcn.h>
#include <netdb.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstring>

// Answers that are made up lead anywhere. These stand before the system's own calls and let out nothing but what goes
// to the fuzzer's own server.

namespace fuzzing {

namespace {
std::uint16_t ownPort = 0;
}

void connectOnlyTo(std::uint16_t port) {
    ownPort = port;
}

}  // namespace fuzzing

extern "C" int connect(int socket, const sockaddr* address, socklen_t size) {
    static const auto systems = reinterpret_cast<decltype(&connect)>(dlsym(RTLD_NEXT, "connect"));
    sockaddr_in internet{};
    if (size >= sizeof internet) std::memcpy(&internet, address, sizeof internet);
    const bool isOwn = internet.sin_family == AF_INET && internet.sin_port == htons(fuzzing::ownPort) &&
                       internet.sin_addr.s_addr == htonl(INADDR_LOOPBACK);
    if (isOwn) return systems(socket, address, size);
    errno = ENETUNREACH;
    return -1;
}

extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints, addrinfo** found) {
    static const auto systems = reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    addrinfo numbersOnly{};
    if (hints != nullptr) numbersOnly = *hints;
    numbersOnly.ai_flags |= AI_NUMERICHOST;
    return systems(name, service, &numbersOnly, found);
}
