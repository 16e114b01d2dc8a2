#pragma once

#include "Page/PageHandler.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace qvhost {

/// Bounds of what clients may cost.
struct PageServerLimits {
    std::size_t connections = 64;
    /// Bytes of all bodies that are on their way at once.
    std::size_t bodies = std::size_t{256} << 20;
    /// From the connection, or the answer before, to the end of the header.
    std::chrono::milliseconds headerTime{10000};
    std::chrono::milliseconds bodyTime{60000};
    std::chrono::milliseconds answerTime{600000};
};

/// An HTTP server for the page: reads requests within bounds, has the handler answer them, and gives every answer the
/// headers that keep a browser from doing anything else with it. One thread for the network, a few for the handler.
class PageServer {
  public:
    /// Listens at once; `error` says why when null is returned. Port 0: the system's choice.
    static std::unique_ptr<PageServer> listen(const std::string& address, std::uint16_t port, PageServerLimits limits,
                                              std::string& error);
    ~PageServer();
    PageServer(const PageServer&) = delete;
    PageServer& operator=(const PageServer&) = delete;

    std::uint16_t port() const;
    /// Serves on the calling thread until `stop`, or until the process is asked to end (SIGINT, SIGTERM, SIGHUP).
    void run(PageHandler& handler);
    /// Any thread, any number of times.
    void stop();

  private:
    class Implementation;
    explicit PageServer(std::unique_ptr<Implementation> implementation);
    std::unique_ptr<Implementation> mImplementation;
};

}  // namespace qvhost
