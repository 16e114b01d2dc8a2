#pragma once

#include "Support/LoopbackAddress.h"

#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <string>

namespace qv::recognition {

/// A connection to a server on this machine that says just what a test wants it to say.
class Client {
  public:
    explicit Client(std::uint16_t port) : mSocket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        const sockaddr_in address = testsupport::loopbackAddress(port);
        mIsConnected = ::connect(mSocket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }
    ~Client() { ::close(mSocket); }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    bool isConnected() const { return mIsConnected; }

    void send(const std::string& bytes) {
        for (std::size_t sent = 0; sent < bytes.size();) {
            const auto count = ::send(mSocket, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
            if (count <= 0) return;
            sent += static_cast<std::size_t>(count);
        }
    }

    /// Everything up to the connection's end.
    std::string readAll() {
        std::string text;
        char buffer[4096];
        for (ssize_t count = 0; (count = ::recv(mSocket, buffer, sizeof buffer, 0)) > 0;)
            text.append(buffer, static_cast<std::size_t>(count));
        return text;
    }

    /// Everything up to so many bytes, or to the connection's end.
    std::string read(std::size_t size) {
        std::string text(size, '\0');
        std::size_t received = 0;
        for (ssize_t count = 1; received < size && count > 0;) {
            count = ::recv(mSocket, text.data() + received, size - received, 0);
            if (count > 0) received += static_cast<std::size_t>(count);
        }
        return text.substr(0, received);
    }

    void hangUp() { ::shutdown(mSocket, SHUT_RDWR); }

  private:
    int mSocket;
    bool mIsConnected = false;
};

inline std::string statusOf(const std::string& answer) {
    return answer.size() < 12 ? answer : answer.substr(9, 3);
}

inline std::string bodyOf(const std::string& answer) {
    const auto end = answer.find("\r\n\r\n");
    return end == std::string::npos ? "no answer" : answer.substr(end + 4);
}

inline std::string post(const std::string& body, const std::string& headers = "") {
    return "POST / HTTP/1.1\r\nHost: x\r\nConnection: close\r\n" + headers +
           "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

}  // namespace qv::recognition
