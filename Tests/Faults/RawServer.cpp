#include "Faults/RawServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <mutex>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

namespace faults {

struct RawServer::State {
    std::mutex mutex;
    bool stopping = false;
    int listener = -1;
    int port = 0;
    std::vector<int> sockets;
    std::vector<std::thread> threads;
    std::thread acceptor;

    void listen(int line);
    void fillLine();
    void acceptAll(const Talk& talk);
    void stop();
};

void RawServer::State::listen(int line) {
    listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    socklen_t length = sizeof address;
    if (listener < 0 || ::bind(listener, generic, length) != 0 || ::listen(listener, line) != 0 ||
        ::getsockname(listener, generic, &length) != 0) {
        throw std::runtime_error("The test server cannot listen on the loopback address");
    }
    port = ntohs(address.sin_port);
}

/// Connects until a connection stays on its way.
void RawServer::State::fillLine() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    constexpr int kMostClients = 64;
    constexpr int kMilliseconds = 200;
    for (int count = 0; count < kMostClients; ++count) {
        const int client = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        sockets.push_back(client);
        ::connect(client, reinterpret_cast<sockaddr*>(&address), sizeof address);
        pollfd end{client, POLLOUT, 0};
        if (::poll(&end, 1, kMilliseconds) == 0) return;
    }
    throw std::runtime_error("The test server's line does not get full");
}

void RawServer::State::acceptAll(const Talk& talk) {
    while (true) {
        const int socket = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0) return;
        const std::lock_guard lock(mutex);
        sockets.push_back(socket);
        if (stopping) return;
        threads.emplace_back([talk, socket, this] {
            testsupport::ScriptedConnection connection(socket);
            talk(connection);
            // What lingers is decided by whether the talk ended with a reset.
            const std::lock_guard ending(mutex);
            std::erase(sockets, socket);
            ::close(socket);
        });
    }
}

void RawServer::State::stop() {
    {
        const std::lock_guard lock(mutex);
        stopping = true;
        for (const int socket : sockets)
            ::shutdown(socket, SHUT_RDWR);
        ::shutdown(listener, SHUT_RDWR);
    }
    if (acceptor.joinable()) acceptor.join();
    for (std::thread& thread : threads)
        thread.join();
    for (const int socket : sockets)
        ::close(socket);
    ::close(listener);
}

RawServer::RawServer() : mState(std::make_unique<State>()) {
}

RawServer::RawServer(Talk talk) : RawServer() {
    constexpr int kLine = 64;
    mState->listen(kLine);
    mState->acceptor = std::thread([state = mState.get(), talk = std::move(talk)] { state->acceptAll(talk); });
}

RawServer::~RawServer() {
    mState->stop();
}

std::unique_ptr<RawServer> RawServer::withFullLine() {
    std::unique_ptr<RawServer> server(new RawServer);
    server->mState->listen(0);
    server->mState->fillLine();
    return server;
}

std::string RawServer::place() const {
    return "127.0.0.1:" + std::to_string(mState->port);
}

}  // namespace faults
