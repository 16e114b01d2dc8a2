#pragma once

#include "Page/PageRequest.h"

#include <cstddef>
#include <optional>

namespace qvhost {

/// What answers the requests that come to a `PageServer`.
class PageHandler {
  public:
    virtual ~PageHandler() = default;

    /// Why a request is not answered, found out from its header before its body is taken: a status. On the server's
    /// thread; must not wait.
    virtual std::optional<unsigned> refusal(const PageRequest& head) const = 0;
    /// The bytes that the body of such a request may have.
    virtual std::size_t bodyLimit(const PageRequest& head) const = 0;
    /// Answers, now or later. On any of the server's threads for work, several at once.
    virtual void handle(const PageRequest& request, const PageAnswering& answer) = 0;
    /// Comes about once a second, for those who have waited long enough. On the server's thread.
    virtual void tick() = 0;
    /// The server ends: whoever waits is to be answered. On the server's thread.
    virtual void stop() = 0;
};

}  // namespace qvhost
