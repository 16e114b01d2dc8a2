#include "Support/LoopbackListener.h"

#include "Support/LoopbackAddress.h"

#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

namespace testsupport {

LoopbackListener::LoopbackListener(int line) : mSocket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address = loopbackAddress(0);
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    socklen_t length = sizeof address;
    if (mSocket < 0 || ::bind(mSocket, generic, length) != 0 || ::listen(mSocket, line) != 0 ||
        ::getsockname(mSocket, generic, &length) != 0) {
        ::close(mSocket);
        throw std::runtime_error("The test server cannot listen on the loopback address");
    }
    mPort = ntohs(address.sin_port);
}

LoopbackListener::~LoopbackListener() {
    ::close(mSocket);
}

int LoopbackListener::accept() const {
    return ::accept4(mSocket, nullptr, nullptr, SOCK_CLOEXEC);
}

void LoopbackListener::stop() {
    ::shutdown(mSocket, SHUT_RDWR);
}

}  // namespace testsupport
