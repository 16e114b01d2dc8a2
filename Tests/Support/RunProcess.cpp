#include "Support/RunProcess.h"

#include "Support/ProcessTexts.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

namespace testsupport {
namespace {

using Clock = std::chrono::steady_clock;

void require(int error) {
    if (error != 0) throw std::system_error(error, std::system_category());
}

/// Both ends of a pipe; neither is passed on to a child by itself.
struct Pipe {
    Pipe() {
        int ends[2];
        require(::pipe(ends) == 0 ? 0 : errno);
        readEnd = ends[0];
        writeEnd = ends[1];
        ::fcntl(readEnd, F_SETFD, FD_CLOEXEC);
        ::fcntl(writeEnd, F_SETFD, FD_CLOEXEC);
    }
    /// A pseudo-terminal instead: what is written to its terminal side is read here.
    static std::unique_ptr<Pipe> terminal() {
        auto pipe = std::make_unique<Pipe>();
        closeEnd(pipe->readEnd);
        closeEnd(pipe->writeEnd);
        pipe->readEnd = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        require(::grantpt(pipe->readEnd) == 0 && ::unlockpt(pipe->readEnd) == 0 ? 0 : errno);
        pipe->writeEnd = ::open(::ptsname(pipe->readEnd), O_RDWR | O_NOCTTY | O_CLOEXEC);
        require(pipe->writeEnd >= 0 ? 0 : errno);
        return pipe;
    }
    ~Pipe() {
        closeEnd(readEnd);
        closeEnd(writeEnd);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    static void closeEnd(int& end) {
        if (end >= 0) ::close(std::exchange(end, -1));
    }

    int readEnd = -1;
    int writeEnd = -1;
};

void directOutput(posix_spawn_file_actions_t& actions, const ProcessCall& call, int pipeEnd) {
    if (call.closesOutput) {
        ::posix_spawn_file_actions_addclose(&actions, STDOUT_FILENO);
    } else if (call.outputFile) {
        ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, call.outputFile->c_str(), O_WRONLY | O_CREAT, 0644);
    } else {
        ::posix_spawn_file_actions_adddup2(&actions, pipeEnd, STDOUT_FILENO);
    }
}

pid_t spawn(const ProcessCall& call, const Pipe& input, const Pipe& output, const Pipe& error) {
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, input.readEnd, STDIN_FILENO);
    directOutput(actions, call, output.writeEnd);
    ::posix_spawn_file_actions_adddup2(&actions, error.writeEnd, STDERR_FILENO);
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    sigset_t signals;
    sigemptyset(&signals);
    // What a terminal's program starts with: a shell's background job ignores the first two.
    for (const int signal : {SIGINT, SIGQUIT, SIGPIPE})
        sigaddset(&signals, signal);
    ::posix_spawnattr_setsigdefault(&attributes, &signals);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    const auto arguments = ProcessTexts::arguments(call.program, call.arguments);
    const auto environment = ProcessTexts::environment(call.environment);
    pid_t identifier = 0;
    const int failure =
        ::posix_spawn(&identifier, call.program.c_str(), &actions, &attributes, arguments.data(), environment.data());
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&actions);
    require(failure);
    return identifier;
}

/// Appends what can be read; closes the end when there will be no more.
void readSome(int& end, std::string& text) {
    char bytes[16384];
    const ssize_t count = ::read(end, bytes, sizeof bytes);
    if (count > 0) {
        text.append(bytes, static_cast<std::size_t>(count));
    } else if (count == 0 || errno != EINTR) {
        Pipe::closeEnd(end);
    }
}

void writeSome(int& end, std::string_view& text) {
    const ssize_t count = text.empty() ? 0 : ::write(end, text.data(), std::min<std::size_t>(text.size(), 4096));
    if (count > 0) text.remove_prefix(static_cast<std::size_t>(count));
    if (text.empty() || (count < 0 && errno != EINTR)) Pipe::closeEnd(end);
}

/// Feeds and drains the pipes until the child has closed both of its outputs; false when the time is over first.
bool converse(const ProcessCall& call, Pipe& input, Pipe& output, Pipe& error, ProcessResult& result) {
    const auto deadline = Clock::now() + call.limit;
    std::string_view rest = call.input;
    while (output.readEnd >= 0 || error.readEnd >= 0) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) return false;
        pollfd ends[3] = {{input.writeEnd, POLLOUT, 0}, {output.readEnd, POLLIN, 0}, {error.readEnd, POLLIN, 0}};
        if (::poll(ends, 3, static_cast<int>(left)) <= 0) continue;
        if (ends[0].revents != 0) writeSome(input.writeEnd, rest);
        if (ends[1].revents != 0) readSome(output.readEnd, result.output);
        if (ends[2].revents != 0) readSome(error.readEnd, result.error);
    }
    return true;
}

int waitFor(pid_t identifier) {
    int status = 0;
    while (::waitpid(identifier, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace

ProcessResult runProcess(const ProcessCall& call) {
    std::signal(SIGPIPE, SIG_IGN);
    Pipe input;
    Pipe output;
    const auto errorPipe = call.errorIsTerminal ? Pipe::terminal() : std::make_unique<Pipe>();
    Pipe& error = *errorPipe;
    const pid_t identifier = spawn(call, input, output, error);
    Pipe::closeEnd(input.readEnd);
    Pipe::closeEnd(output.writeEnd);
    Pipe::closeEnd(error.writeEnd);
    ProcessResult result;
    result.timedOut = !converse(call, input, output, error, result);
    if (result.timedOut) ::kill(identifier, call.signalAtLimit);
    result.status = waitFor(identifier);
    return result;
}

}  // namespace testsupport
