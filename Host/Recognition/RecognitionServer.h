#pragma once

#include "Support/Result.h"

#include <string>

namespace qvhost {

/// Where cards are sent, and the secret that goes with them.
struct ServerAccess {
    std::string url;
    std::string token;
};

/// The recognition server that a command works with.
class RecognitionServer {
  public:
    virtual ~RecognitionServer() = default;

    /// How to reach the server, which is started first if that is ours to do.
    virtual Result<ServerAccess> access() = 0;

    /// After an exchange failed: whether the server has ended meanwhile and `access` would start another.
    virtual bool hasEnded() { return false; }

    /// The server in words, for messages; without secrets.
    virtual std::string name() const = 0;
};

}  // namespace qvhost
