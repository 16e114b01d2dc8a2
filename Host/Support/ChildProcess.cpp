#include "Support/ChildProcess.h"

#include "Support/FileWriting.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>

extern char** environ;

namespace qvhost {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kGrace{2};
constexpr std::size_t kLongestLine = 4096;

struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

int closeOnExec(int file) {
    return ::fcntl(file, F_SETFD, FD_CLOEXEC);
}

std::optional<Pipe> makePipe() {
    int ends[2];
    if (::pipe(ends) != 0) return std::nullopt;
    Pipe pipe{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
    if (closeOnExec(ends[0]) != 0 || closeOnExec(ends[1]) != 0) return std::nullopt;
    return pipe;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> environmentWithout(std::string_view prefix) {
    std::vector<std::string> texts;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        if (prefix.empty() || !text.starts_with(prefix)) texts.emplace_back(text);
    }
    return texts;
}

/// What the child starts with: our pipes as its input and output, no other file of ours but standard error, and the
/// usual meaning of every signal.
class SpawnSettings {
  public:
    SpawnSettings(int input, int output) {
        ::posix_spawn_file_actions_init(&mActions);
        ::posix_spawn_file_actions_adddup2(&mActions, input, STDIN_FILENO);
        ::posix_spawn_file_actions_adddup2(&mActions, output, STDOUT_FILENO);
#if defined(__GLIBC__) && __GLIBC_PREREQ(2, 34)
        // Sockets that libraries opened: a connection that the child holds, too, would not end when this program ends
        // it.
        ::posix_spawn_file_actions_addclosefrom_np(&mActions, STDERR_FILENO + 1);
#endif
        ::posix_spawnattr_init(&mAttributes);
        sigset_t signals;
        sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&mAttributes, &signals);
        sigaddset(&signals, SIGPIPE);
        sigaddset(&signals, SIGXFSZ);
        ::posix_spawnattr_setsigdefault(&mAttributes, &signals);
        ::posix_spawnattr_setflags(&mAttributes,
                                   POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
        // Ctrl-C is for this program, which ends its children in its own time.
        ::posix_spawnattr_setpgroup(&mAttributes, 0);
    }
    ~SpawnSettings() {
        ::posix_spawnattr_destroy(&mAttributes);
        ::posix_spawn_file_actions_destroy(&mActions);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    int spawn(const std::string& program, std::vector<std::string> arguments, std::vector<std::string> environment,
              pid_t& identifier) const {
        return ::posix_spawn(&identifier, program.c_str(), &mActions, &mAttributes, pointersTo(arguments).data(),
                             pointersTo(environment).data());
    }

  private:
    posix_spawn_file_actions_t mActions{};
    posix_spawnattr_t mAttributes{};
};

/// Waits until there is something to read or the other end is closed; false when the time is over.
bool waitForInput(int file, Clock::time_point deadline) {
    while (true) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        pollfd waiting{file, POLLIN, 0};
        const int count = ::poll(&waiting, 1, static_cast<int>(std::max<long long>(left, 0)));
        if (count > 0) return true;
        if (count == 0 || errno != EINTR) return false;
    }
}

}  // namespace

std::unique_ptr<ChildProcess> ChildProcess::start(const std::filesystem::path& program,
                                                  const std::vector<std::string>& arguments,
                                                  std::string_view withoutPrefix, int& error) {
    std::optional<Pipe> input = makePipe();
    std::optional<Pipe> output = makePipe();
    if (!input || !output) {
        error = errno;
        return nullptr;
    }
    std::vector<std::string> all{program.string()};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const SpawnSettings settings(input->readEnd.number(), output->writeEnd.number());
    pid_t identifier = 0;
    error = settings.spawn(program.string(), std::move(all), environmentWithout(withoutPrefix), identifier);
    if (error != 0) return nullptr;
    return std::unique_ptr<ChildProcess>(
        new ChildProcess(identifier, std::move(input->writeEnd), std::move(output->readEnd)));
}

ChildProcess::ChildProcess(pid_t identifier, FileDescriptor input, FileDescriptor output)
    : mIdentifier(identifier), mInput(std::move(input)), mOutput(std::move(output)) {
}

ChildProcess::~ChildProcess() {
    stop();
}

bool ChildProcess::write(std::string_view text) {
    return writeAll(mInput.number(), text) == 0;
}

std::optional<std::string> ChildProcess::readLine(std::chrono::milliseconds within) {
    const auto deadline = Clock::now() + within;
    std::string line;
    while (line.size() < kLongestLine && waitForInput(mOutput.number(), deadline)) {
        char character = 0;
        const ssize_t count = ::read(mOutput.number(), &character, 1);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return std::nullopt;
        if (character == '\n') return line;
        line += character;
    }
    return std::nullopt;
}

bool ChildProcess::endsWithin(std::chrono::milliseconds time) {
    const auto deadline = Clock::now() + time;
    char ignored[512];
    while (waitForInput(mOutput.number(), deadline)) {
        const ssize_t count = ::read(mOutput.number(), ignored, sizeof ignored);
        if (count == 0 || (count < 0 && errno != EINTR)) return true;
    }
    return false;
}

void ChildProcess::stop() {
    mInput.close();
    ::kill(mIdentifier, SIGTERM);
    if (!endsWithin(kGrace)) ::kill(mIdentifier, SIGKILL);
    // A process that closed its output but lives on would be waited for without end.
    for (const auto deadline = Clock::now() + kGrace; ::waitpid(mIdentifier, nullptr, WNOHANG) == 0;) {
        if (Clock::now() > deadline) ::kill(mIdentifier, SIGKILL);
        ::poll(nullptr, 0, 1);
    }
}

}  // namespace qvhost
