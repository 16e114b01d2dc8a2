#pragma once

#include "Support/Gate.h"
#include "Support/ScriptedConnection.h"
#include "Support/ScriptedRequest.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace testsupport {

/// A server on a loopback port of the system's choice that answers as it is told and remembers what it was sent. One
/// thread per connection, all joined when it goes. Connections stay open between requests unless an answer ends them.
///
/// Answers are used up in the order given; the last one serves for good. Any thread may call.
class ScriptedServer {
  public:
    using Handler = std::function<void(ScriptedConnection& connection, const ScriptedRequest& request)>;

    ScriptedServer();
    ~ScriptedServer();
    ScriptedServer(const ScriptedServer&) = delete;
    ScriptedServer& operator=(const ScriptedServer&) = delete;

    int port() const;
    /// "http://127.0.0.1:PORT" and the path.
    std::string url(std::string_view path = "/") const;

    /// Answers one request with these bytes, head and all.
    void respond(std::string bytes);
    /// The same, and ends the connection then.
    void respondAndClose(std::string bytes);
    /// The same as `respond`, once the gate is open; the server's end opens it.
    void respondAfter(std::shared_ptr<Gate> gate, std::string bytes);
    /// Answers one request with whatever the handler does.
    void handle(Handler handler);

    /// A complete answer with a body and its length; `headers` are whole lines, each with its line end.
    static std::string answer(int status, std::string_view body, std::string_view headers = "");

    /// What was received whole, in that order, before it is answered.
    std::vector<ScriptedRequest> requests() const;
    std::size_t connectionCount() const;

    /// From now on requests are remembered without their bodies.
    void forgetBodies();

    /// Waits until so many requests were received; says whether they were (a broken test ends after a minute).
    bool waitForRequests(std::size_t count) const;

  private:
    struct State;
    std::unique_ptr<State> mState;
};

}  // namespace testsupport
