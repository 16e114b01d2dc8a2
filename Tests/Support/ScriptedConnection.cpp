#include "Support/ScriptedConnection.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/types.h>

#include <array>
#include <utility>

namespace testsupport {

void ScriptedConnection::write(std::string_view bytes) {
    while (mIsOpen && !bytes.empty()) {
        const ssize_t sent = ::send(mSocket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) {
            mIsOpen = false;
            return;
        }
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
}

void ScriptedConnection::close() {
    // The server closes the socket itself when the handler has returned.
    ::shutdown(mSocket, SHUT_WR);
    mIsOpen = false;
}

void ScriptedConnection::reset() {
    const linger atOnce{1, 0};
    ::setsockopt(mSocket, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    mIsOpen = false;
}

void ScriptedConnection::waitUntilClosed() {
    while (readMore()) {
    }
    mIsOpen = false;
}

bool ScriptedConnection::isClosedWithin(std::chrono::milliseconds time) {
    pollfd end{mSocket, POLLIN, 0};
    if (mIsOpen && ::poll(&end, 1, static_cast<int>(time.count())) > 0) mIsOpen = readMore();
    mReceived.clear();
    return !mIsOpen;
}

bool ScriptedConnection::readMore() {
    std::array<char, 65536> buffer{};
    const ssize_t count = ::recv(mSocket, buffer.data(), buffer.size(), 0);
    if (count <= 0) return false;
    mReceived.append(buffer.data(), static_cast<std::size_t>(count));
    return true;
}

std::optional<ScriptedRequest> ScriptedConnection::readRequest() {
    constexpr std::string_view kEnd = "\r\n\r\n";
    std::size_t end = 0;
    while ((end = mReceived.find(kEnd)) == std::string::npos) {
        if (!readMore()) return std::nullopt;
    }
    end += kEnd.size();
    ScriptedRequest request = ScriptedRequest::fromHead(mReceived.substr(0, end));
    const std::size_t length = request.contentLength();
    while (mReceived.size() < end + length) {
        if (!readMore()) return std::nullopt;
    }
    request.body = mReceived.substr(end, length);
    mReceived.erase(0, end + length);
    return request;
}

}  // namespace testsupport
