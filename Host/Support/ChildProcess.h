#pragma once

#include "Support/FileDescriptor.h"

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qvhost {

/// A program that runs beside this one, joined to it by its standard input and output; both ends are closed to every
/// other child. It shares standard error and no other file. One thread at a time.
class ChildProcess {
  public:
    /// Starts a program with these arguments (its own name goes first by itself) and this program's environment but for
    /// those variables that begin with `withoutPrefix` (empty: none is left out). Null, and the system's error number,
    /// when it cannot be started.
    static std::unique_ptr<ChildProcess> start(const std::filesystem::path& program,
                                               const std::vector<std::string>& arguments,
                                               std::string_view withoutPrefix, int& error);

    /// Stops the process: its input is closed, it is asked to end, and after two seconds it is made to.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Writes to its standard input; false when it no longer reads (SIGPIPE has to be ignored for that).
    bool write(std::string_view text);

    /// The next line of its output without the line break; nothing when it ended, said too much or took too long.
    std::optional<std::string> readLine(std::chrono::milliseconds within);

    /// Whether its output ends within the time: the sign that it has ended, or soon will have.
    bool endsWithin(std::chrono::milliseconds time);

  private:
    ChildProcess(pid_t identifier, FileDescriptor input, FileDescriptor output);
    void stop();

    pid_t mIdentifier;
    FileDescriptor mInput;
    FileDescriptor mOutput;
};

}  // namespace qvhost
