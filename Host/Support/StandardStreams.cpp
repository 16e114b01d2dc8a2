#include "Support/StandardStreams.h"

#include "Support/FileWriting.h"
#include "Support/Messages.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <mutex>
#include <string>
#include <system_error>

namespace qvhost::StandardStreams {
namespace {

constexpr std::string_view kEraseLine = "\r\x1b[K";

/// Never destroyed: threads that nobody waited for may still have something to say when the process ends.
std::mutex& mutex = *new std::mutex;
std::string& statusLine = *new std::string;

}  // namespace

void prepare() {
    (void)std::signal(SIGPIPE, SIG_IGN);
    // What passes the user's limit for files fails like any other write, and is told.
    (void)std::signal(SIGXFSZ, SIG_IGN);
    // Open for reading only: what is written to a stream that was closed still fails.
    while (true) {
        const int number = ::open("/dev/null", O_RDONLY);
        if (number < 0 || number > STDERR_FILENO) {
            if (number >= 0) ::close(number);
            return;
        }
    }
}

ExitStatus writeResult(std::string_view text) {
    const int error = writeAll(STDOUT_FILENO, text);
    if (error == 0) return ExitStatus::Done;
    // A reader that has seen enough, as behind "| head", wants to hear nothing more.
    if (error == EPIPE) return ExitStatus::NotWritten;
    Messages::say("The result could not be written to standard output: " + std::system_category().message(error) +
                  ". Check where the output goes and run again.");
    return ExitStatus::NotWritten;
}

void writeError(std::string_view text) {
    const std::lock_guard lock(mutex);
    std::string shown(statusLine.empty() ? "" : kEraseLine);
    shown.append(text).append(statusLine);
    static_cast<void>(writeAll(STDERR_FILENO, shown));
}

void showStatus(const std::string& line) {
    if (::isatty(STDERR_FILENO) != 1) return;
    const std::lock_guard lock(mutex);
    statusLine = line;
    static_cast<void>(writeAll(STDERR_FILENO, std::string(kEraseLine) + statusLine));
}

}  // namespace qvhost::StandardStreams
