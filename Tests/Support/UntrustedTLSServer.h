#pragma once

#include <memory>
#include <string>

namespace testsupport {

/// A TLS server on a loopback port whose certificate nobody has signed but itself. It says what it was sent, in case a
/// client goes on all the same. Joined when it goes.
class UntrustedTLSServer {
  public:
    UntrustedTLSServer();
    ~UntrustedTLSServer();
    UntrustedTLSServer(const UntrustedTLSServer&) = delete;
    UntrustedTLSServer& operator=(const UntrustedTLSServer&) = delete;

    /// "https://127.0.0.1:PORT/"; the certificate is for that address.
    std::string url() const;

    /// How many clients came.
    int connectionCount() const;

    /// Everything that came through after a handshake.
    std::string received() const;

  private:
    struct State;
    std::unique_ptr<State> mState;
};

}  // namespace testsupport
