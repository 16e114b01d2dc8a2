#pragma once

#include "Support/ScriptedServer.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace testsupport {

/// How a server differs from a good one.
struct CardDAVHabits {
    /// Where set, only this "Authorization" is let in.
    std::optional<std::string> authorization{};
    bool sendsETags = true;
    bool sendsETagsForPuts = true;
    bool keepsConditions = true;
    /// Whether it answers addressbook-query and addressbook-multiget at all, and what it finds in the first.
    bool searches = true;
    bool findsNothing = false;
    bool fetchesMany = true;
    /// So many of the next PUTs are done, or left, and their connections reset then.
    int answersToLose = 0;
    int putsToLose = 0;
    /// Lines between BEGIN and END are sorted, as some servers write cards anew.
    bool sortsLines = false;
};

/// A CardDAV server (RFC 6352) in the test's process, with one address book of one user: "/dav/books/ada/contacts/",
/// found from "/.well-known/carddav" by way of "/dav/" and "/dav/users/ada/". Any thread may call.
class FakeCardDAVServer {
  public:
    FakeCardDAVServer();
    ~FakeCardDAVServer();

    std::string url(std::string_view path = "/") const { return mServer.url(path); }
    int port() const { return mServer.port(); }
    std::string collection() const { return url("/dav/books/ada/contacts/"); }

    /// What another client does.
    void putCard(const std::string& name, const std::string& bytes);
    void removeCard(const std::string& name);
    /// By name, the last segment of the address without escapes.
    std::map<std::string, std::string> cards() const;

    void setHabits(const CardDAVHabits& habits);

    /// Called with each request before it is answered, on the server's thread; what it returns is sent instead of the
    /// server's own answer. It may change cards.
    using Interceptor = std::function<std::optional<std::string>(const ScriptedRequest& request)>;
    void setInterceptor(Interceptor interceptor);

    std::vector<ScriptedRequest> requests() const { return mServer.requests(); }
    /// Those of one method.
    std::vector<ScriptedRequest> requests(std::string_view method) const;

    /// A multi-status answer around these responses.
    static std::string multistatus(const std::string& responses);

  private:
    struct State;
    std::shared_ptr<State> mState;
    /// Last, so that its threads are joined before the rest goes.
    ScriptedServer mServer;
};

}  // namespace testsupport
