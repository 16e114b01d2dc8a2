#pragma once

#include "Support/ScriptedRequest.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace testsupport {

/// The server's end of one connection, as a handler sees it.
class ScriptedConnection {
  public:
    explicit ScriptedConnection(int socket) : mSocket(socket) {}

    /// Sends bytes as they are; without effect once the connection is gone.
    void write(std::string_view bytes);

    /// Ends the connection in good order after what was written.
    void close();

    /// Ends the connection with a reset: the other side loses what it has not read yet.
    void reset();

    /// Says nothing more until the other side gives up (or the server ends).
    void waitUntilClosed();

    /// Waits that long for the other side to go; says whether it went. What it sends meanwhile is dropped.
    bool isClosedWithin(std::chrono::milliseconds time);

    bool isOpen() const { return mIsOpen; }

    /// The next request; nothing when the connection ended before a whole one arrived.
    std::optional<ScriptedRequest> readRequest();

  private:
    bool readMore();

    int mSocket;
    bool mIsOpen = true;
    std::string mReceived;
};

}  // namespace testsupport
