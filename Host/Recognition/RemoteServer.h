#pragma once

#include "Recognition/RecognitionServer.h"

namespace qvhost {

/// A server that somebody else runs.
class RemoteServer : public RecognitionServer {
  public:
    explicit RemoteServer(ServerAccess access) : mAccess(std::move(access)) {}

    Result<ServerAccess> access() override { return mAccess; }
    std::string name() const override { return "the recognition server at " + mAccess.url; }

    /// Why an address cannot be that of a recognition server; empty when it can.
    static std::string objectionTo(const std::string& url);

  private:
    ServerAccess mAccess;
};

}  // namespace qvhost
