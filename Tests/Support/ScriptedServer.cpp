#include "Support/ScriptedServer.h"

#include "Support/LoopbackListener.h"

#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <set>
#include <thread>
#include <utility>

namespace testsupport {

struct ScriptedServer::State {
    mutable std::mutex mutex;
    mutable std::condition_variable requestArrived;
    std::deque<Handler> answers;
    std::vector<ScriptedRequest> requests;
    std::vector<std::shared_ptr<Gate>> gates;
    std::set<int> sockets;
    std::vector<std::thread> connections;
    bool stopping = false;
    bool forgetsBodies = false;
    LoopbackListener listener{256};
    std::thread acceptor;

    void acceptAll();
    void serve(int socket, std::size_t number);
    void answerRequests(ScriptedConnection& connection, std::size_t number);
    Handler record(ScriptedRequest request);
    void stop();
};

void ScriptedServer::State::acceptAll() {
    while (true) {
        const int socket = listener.accept();
        if (socket < 0) return;
        const std::lock_guard lock(mutex);
        if (stopping) {
            ::close(socket);
            return;
        }
        sockets.insert(socket);
        connections.emplace_back([this, socket, number = connections.size() + 1] { serve(socket, number); });
    }
}

void ScriptedServer::State::serve(int socket, std::size_t number) {
    ScriptedConnection connection(socket);
    answerRequests(connection, number);
    const std::lock_guard lock(mutex);
    sockets.erase(socket);
    ::close(socket);
}

void ScriptedServer::State::answerRequests(ScriptedConnection& connection, std::size_t number) {
    while (connection.isOpen()) {
        auto request = connection.readRequest();
        if (!request) return;
        request->connection = number;
        const Handler handler = record(*request);
        handler(connection, *request);
    }
}

ScriptedServer::Handler ScriptedServer::State::record(ScriptedRequest request) {
    const std::lock_guard lock(mutex);
    if (forgetsBodies) request.body = {};
    requests.push_back(std::move(request));
    requestArrived.notify_all();
    if (answers.empty()) {
        return [](ScriptedConnection& connection, const ScriptedRequest&) {
            connection.write(answer(500, "no answer scripted"));
        };
    }
    Handler handler = answers.front();
    if (answers.size() > 1) answers.pop_front();
    return handler;
}

void ScriptedServer::State::stop() {
    {
        const std::lock_guard lock(mutex);
        stopping = true;
        for (const auto& gate : gates)
            gate->open();
        for (const int socket : sockets)
            ::shutdown(socket, SHUT_RDWR);
        listener.stop();
    }
    acceptor.join();
    for (std::thread& connection : connections)
        connection.join();
}

ScriptedServer::ScriptedServer() : mState(std::make_unique<State>()) {
    mState->acceptor = std::thread([state = mState.get()] { state->acceptAll(); });
}

ScriptedServer::~ScriptedServer() {
    mState->stop();
}

int ScriptedServer::port() const {
    return mState->listener.port();
}

std::string ScriptedServer::url(std::string_view path) const {
    return "http://127.0.0.1:" + std::to_string(port()) + std::string(path);
}

void ScriptedServer::handle(Handler handler) {
    const std::lock_guard lock(mState->mutex);
    mState->answers.push_back(std::move(handler));
}

void ScriptedServer::respond(std::string bytes) {
    handle([bytes = std::move(bytes)](ScriptedConnection& connection, const ScriptedRequest&) {
        connection.write(bytes);
    });
}

void ScriptedServer::respondAndClose(std::string bytes) {
    handle([bytes = std::move(bytes)](ScriptedConnection& connection, const ScriptedRequest&) {
        connection.write(bytes);
        connection.close();
    });
}

void ScriptedServer::respondAfter(std::shared_ptr<Gate> gate, std::string bytes) {
    {
        const std::lock_guard lock(mState->mutex);
        mState->gates.push_back(gate);
    }
    handle([gate = std::move(gate), bytes = std::move(bytes)](ScriptedConnection& connection, const ScriptedRequest&) {
        gate->wait();
        connection.write(bytes);
    });
}

std::string ScriptedServer::answer(int status, std::string_view body, std::string_view headers) {
    std::string text = "HTTP/1.1 " + std::to_string(status) + " Scripted\r\n";
    text.append(headers);
    text.append("Content-Length: " + std::to_string(body.size()) + "\r\n\r\n");
    return text.append(body);
}

std::vector<ScriptedRequest> ScriptedServer::requests() const {
    const std::lock_guard lock(mState->mutex);
    return mState->requests;
}

std::size_t ScriptedServer::connectionCount() const {
    const std::lock_guard lock(mState->mutex);
    return mState->connections.size();
}

void ScriptedServer::forgetBodies() {
    const std::lock_guard lock(mState->mutex);
    mState->forgetsBodies = true;
}

bool ScriptedServer::waitForRequests(std::size_t count) const {
    std::unique_lock lock(mState->mutex);
    return mState->requestArrived.wait_for(lock, std::chrono::seconds(60),
                                           [&] { return mState->requests.size() >= count; });
}

}  // namespace testsupport
