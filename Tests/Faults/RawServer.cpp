#include "Faults/RawServer.h"

#include "Support/LoopbackAddress.h"
#include "Support/LoopbackListener.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <mutex>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

namespace faults {

namespace {

constexpr int kLine = 64;

}  // namespace

struct RawServer::State {
    explicit State(int line) : listener(line) {}

    std::mutex mutex;
    bool stopping = false;
    testsupport::LoopbackListener listener;
    std::vector<int> sockets;
    std::vector<std::thread> threads;
    std::thread acceptor;

    void fillLine();
    void acceptAll(const Talk& talk);
    void stop();
};

/// Connects until a connection stays on its way.
void RawServer::State::fillLine() {
    const sockaddr_in address = testsupport::loopbackAddress(listener.port());
    constexpr int kMostClients = 64;
    constexpr int kMilliseconds = 200;
    for (int count = 0; count < kMostClients; ++count) {
        const int client = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        sockets.push_back(client);
        // It is on its way or done; which of them is seen below.
        (void)::connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address);
        pollfd end{client, POLLOUT, 0};
        if (::poll(&end, 1, kMilliseconds) == 0) return;
    }
    throw std::runtime_error("The test server's line does not get full");
}

void RawServer::State::acceptAll(const Talk& talk) {
    while (true) {
        const int socket = listener.accept();
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
        listener.stop();
    }
    if (acceptor.joinable()) acceptor.join();
    for (std::thread& thread : threads)
        thread.join();
    for (const int socket : sockets)
        ::close(socket);
}

RawServer::RawServer(int line) : mState(std::make_unique<State>(line)) {
}

RawServer::RawServer(Talk talk) : RawServer(kLine) {
    mState->acceptor = std::thread([state = mState.get(), talk = std::move(talk)] { state->acceptAll(talk); });
}

RawServer::~RawServer() {
    mState->stop();
}

std::unique_ptr<RawServer> RawServer::withFullLine() {
    std::unique_ptr<RawServer> server(new RawServer(0));
    server->mState->fillLine();
    return server;
}

std::string RawServer::place() const {
    return "127.0.0.1:" + std::to_string(mState->listener.port());
}

}  // namespace faults
