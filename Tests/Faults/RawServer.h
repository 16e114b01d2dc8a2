#pragma once

#include "Support/ScriptedConnection.h"

#include <functional>
#include <memory>
#include <string>

namespace faults {

/// A server on a loopback port that does something else than to read a request first, or nothing at all. Joined when it
/// goes.
class RawServer {
  public:
    using Talk = std::function<void(testsupport::ScriptedConnection& connection)>;

    /// Talks with each client like this, on a thread of its own.
    explicit RawServer(Talk talk);
    ~RawServer();
    RawServer(const RawServer&) = delete;
    RawServer& operator=(const RawServer&) = delete;

    /// One that accepts nobody and whose line is full: the system drops what would connect.
    static std::unique_ptr<RawServer> withFullLine();

    /// "127.0.0.1:PORT".
    std::string place() const;

  private:
    struct State;
    explicit RawServer(int line);
    std::unique_ptr<State> mState;
};

}  // namespace faults
