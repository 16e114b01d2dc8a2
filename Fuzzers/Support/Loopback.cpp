#include "Support/Loopback.h"

#include "Support/Require.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

namespace fuzzing {

namespace {

/// Milliseconds: shorter than the fuzzers' own limit, and long enough for a machine that has other things to do.
constexpr int kPatience = 110000;

sockaddr_in loopback(std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

/// Each connection comes from another of the machine's own addresses: one alone has 28 000 ports, and each of them
/// rests for a minute after it was used. Without it the system chooses.
void bindToNextAddress(int connection) {
    static std::uint32_t count = 0;
    sockaddr_in address = loopback(0);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK + ++count % 0xFFFF);
    (void)bind(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

void send(int connection, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) return;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

/// False at the end of the connection.
bool receive(int connection, std::string& received) {
    pollfd ready{.fd = connection, .events = POLLIN, .revents = 0};
    int count = -1;
    // The fuzzer's own clock interrupts.
    do {
        count = poll(&ready, 1, kPatience);
    } while (count < 0 && errno == EINTR);
    require(count == 1, "the other side answers or ends in time");
    char bytes[4096];
    const ssize_t size = recv(connection, bytes, sizeof bytes, 0);
    if (size > 0) received.append(bytes, static_cast<std::size_t>(size));
    return size > 0;
}

}  // namespace

AnswerServer::AnswerServer() : mSocket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    require(bind(mSocket, reinterpret_cast<sockaddr*>(&address), size) == 0 && listen(mSocket, SOMAXCONN) == 0 &&
                getsockname(mSocket, reinterpret_cast<sockaddr*>(&address), &size) == 0,
            "a server can listen on loopback");
    mPort = ntohs(address.sin_port);
    std::thread([this] { serve(); }).detach();
}

void AnswerServer::play(std::vector<std::string> answers, bool inPieces) {
    const std::lock_guard lock(mMutex);
    mAnswers = std::move(answers);
    mNext = 0;
    mInPieces = inPieces;
}

std::string AnswerServer::nextAnswer(bool& inPieces) {
    const std::lock_guard lock(mMutex);
    inPieces = mInPieces;
    const std::string& answer = mAnswers[mNext];
    if (mNext + 1 < mAnswers.size()) ++mNext;
    return answer;
}

void AnswerServer::serve() {
    while (true) {
        const int connection = accept4(mSocket, nullptr, nullptr, SOCK_CLOEXEC);
        if (connection < 0) continue;
        answer(connection);
        close(connection);
    }
}

void AnswerServer::answer(int connection) {
    const int atOnce = 1;
    setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, &atOnce, sizeof atOnce);
    std::string request;
    while (request.find("\r\n\r\n") == std::string::npos) {
        if (!receive(connection, request)) return;
    }
    bool inPieces = false;
    const std::string bytes = nextAnswer(inPieces);
    for (std::size_t i = 0; inPieces && i < bytes.size(); ++i)
        send(connection, std::string_view(bytes).substr(i, 1));
    if (!inPieces) send(connection, bytes);
    shutdown(connection, SHUT_WR);
    // Closing before the client does would reset the connection when it still sends, and it would miss the answer.
    while (receive(connection, request)) {
    }
}

std::string exchange(std::uint16_t port, const std::vector<std::string>& pieces) {
    const int connection = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = loopback(port);
    bindToNextAddress(connection);
    std::string received;
    if (connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
        const int atOnce = 1;
        setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, &atOnce, sizeof atOnce);
        for (const std::string& piece : pieces)
            send(connection, piece);
        shutdown(connection, SHUT_WR);
        while (receive(connection, received)) {
        }
    }
    close(connection);
    return received;
}

}  // namespace fuzzing
