#pragma once

#include "Server/WorkerPool.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace qv::recognition {

struct ServerOptions {
    std::string address = "127.0.0.1";
    std::uint16_t port = 0;  ///< 0: the system's choice
    std::string token;       ///< empty: none is asked for
    std::size_t workers = 1;
    std::size_t places = 8;  ///< requests that may wait while all workers are busy
    std::size_t connections = 128;
    std::size_t bodyLimit = 8U << 20U;
    std::chrono::milliseconds headerTime{
        10000};  ///< from the connection, or the answer before, to the end of the header
    std::chrono::milliseconds bodyTime{30000};
    std::chrono::milliseconds stopTime{20000};  ///< running requests may take this long after `stop`
};

/// Takes pictures by POST at "/" and answers with recognition results; "GET /health" says that it is there. Every
/// answer to a POST that is not a result has an empty body, because its readers look at no status and take any body for
/// one. Never throws.
class HTTPServer {
  public:
    /// One line per request, without anything that a card or a request says. Called on the server's and workers'
    /// threads.
    using Log = std::function<void(std::string_view line)>;

    /// Listens at once; `error` says why when null is returned.
    static std::unique_ptr<HTTPServer> listen(ServerOptions options, RecogniserFactory factory, Log log,
                                              std::string& error);
    ~HTTPServer();
    HTTPServer(const HTTPServer&) = delete;
    HTTPServer& operator=(const HTTPServer&) = delete;

    std::uint16_t port() const;
    /// Serves on the calling thread until `stop`. False when running requests had not ended in time.
    bool run();
    /// Takes no more connections, drops what waits and lets running requests end. Any thread, any number of times.
    void stop();
    /// As `stop`, when the process is asked to end (SIGTERM, SIGINT).
    void stopOnSignals();

  private:
    class Implementation;
    explicit HTTPServer(std::unique_ptr<Implementation> implementation);
    std::unique_ptr<Implementation> mImplementation;
};

}  // namespace qv::recognition
