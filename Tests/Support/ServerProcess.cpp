#include "Support/ServerProcess.h"

#include "Support/LoopbackAddress.h"
#include "Support/ProcessTexts.h"
#include "Support/ReadFile.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <random>
#include <stdexcept>
#include <utility>

namespace testsupport {

namespace {

using Clock = std::chrono::steady_clock;

template <typename Try>
bool tryWithSocket(int port, Try attempt) {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = loopbackAddress(port);
    const bool worked = attempt(socket, reinterpret_cast<const sockaddr*>(&address), socklen_t{sizeof address}) == 0;
    ::close(socket);
    return worked;
}

/// Below the ports that the system hands out by itself, so that no other test gets it meanwhile.
int freePort() {
    std::random_device source;
    std::uniform_int_distribution<int> ports(20000, 31999);
    for (;;) {
        const int port = ports(source);
        if (tryWithSocket(port, ::bind)) return port;
    }
}

}  // namespace

ServerProcess::ServerProcess(const std::function<ServerCall(int port)>& callForPort) {
    constexpr int kTries = 5;
    std::string output;
    for (int i = 0; i < kTries; ++i) {
        mPort = freePort();
        const ServerCall call = callForPort(mPort);
        start(call);
        if (waitUntilItListens(std::chrono::seconds(60))) return;
        stop();
        output = readFile(call.log);
    }
    throw std::runtime_error("The server does not start: " + output);
}

ServerProcess::~ServerProcess() {
    stop();
}

void ServerProcess::start(const ServerCall& call) {
    const auto arguments = ProcessTexts::arguments(call.program, call.arguments);
    const auto environment = ProcessTexts::environment(call.environment);
    const int log = ::open(call.log.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    mProcess = ::fork();
    if (mProcess == 0) {
        // Nothing but system calls: other threads of the test may have held locks.
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        ::dup2(log, STDOUT_FILENO);
        ::dup2(log, STDERR_FILENO);
        ::execve(call.program.c_str(), arguments.data(), environment.data());
        ::_exit(127);
    }
    ::close(log);
    if (mProcess < 0) throw std::runtime_error("No process for the server");
    mHandle = static_cast<int>(::syscall(SYS_pidfd_open, mProcess, 0));
}

bool ServerProcess::hasEnded(std::chrono::milliseconds wait) {
    pollfd end{mHandle, POLLIN, 0};
    return ::poll(&end, 1, static_cast<int>(wait.count())) > 0;
}

bool ServerProcess::waitUntilItListens(std::chrono::seconds limit) {
    const auto deadline = Clock::now() + limit;
    while (Clock::now() < deadline) {
        if (hasEnded(std::chrono::milliseconds(10))) return false;
        if (!tryWithSocket(mPort, ::connect)) continue;
        // Whoever had the port before the server makes it end soon after.
        return !hasEnded(std::chrono::milliseconds(50));
    }
    return false;
}

void ServerProcess::stop() {
    if (mProcess < 0) return;
    ::kill(mProcess, SIGTERM);
    if (!hasEnded(std::chrono::seconds(10))) ::kill(mProcess, SIGKILL);
    awaitEnd();
}

void ServerProcess::kill() {
    ::kill(mProcess, SIGKILL);
    awaitEnd();
}

void ServerProcess::awaitEnd() {
    int status = 0;
    while (::waitpid(mProcess, &status, 0) < 0 && errno == EINTR) {
    }
    ::close(std::exchange(mHandle, -1));
    mProcess = -1;
}

}  // namespace testsupport
