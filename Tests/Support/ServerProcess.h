#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace testsupport {

/// A server that is another program.
struct ServerCall {
    std::filesystem::path program;
    std::vector<std::string> arguments;
    /// Changes to the test's own environment; an absent value removes the variable.
    std::map<std::string, std::optional<std::string>> environment;
    /// Where both of its outputs go.
    std::filesystem::path log;
};

/// Such a server, running on a loopback port until the object goes (or the test dies). Throws `std::runtime_error`,
/// with what the program wrote, when it cannot be started.
class ServerProcess {
  public:
    /// Asks for the call with a port that nobody has, starts it and waits until it accepts connections; with another
    /// port when somebody took that one first.
    explicit ServerProcess(const std::function<ServerCall(int port)>& callForPort);
    ~ServerProcess();
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    int port() const { return mPort; }

    /// Ends it without any warning, as a crash or the system would.
    void kill();

  private:
    void start(const ServerCall& call);
    void stop();
    void awaitEnd();
    /// False when the program ended instead.
    bool waitUntilItListens(std::chrono::seconds limit);
    bool hasEnded(std::chrono::milliseconds wait);

    pid_t mProcess = -1;
    int mHandle = -1;
    int mPort = 0;
};

}  // namespace testsupport
