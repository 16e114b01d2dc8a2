#pragma once

#include <memory>
#include <string>

namespace testsupport {

/// What the certificate of such a server says of it.
struct TLSCertificateOptions {
    /// The one address that it is for.
    std::string address = "127.0.0.1";
    /// From and until when it holds, in seconds from now.
    long validFrom = -60 * 60;
    long validUntil = 60 * 60;
};

/// A TLS server on a loopback port whose certificate nobody has signed but itself. It says what it was sent, in case a
/// client goes on all the same. Joined when it goes.
class UntrustedTLSServer {
  public:
    /// Without an answer it hangs up on whoever goes on after the handshake; otherwise it reads one request whole,
    /// answers it with these bytes and hangs up then.
    explicit UntrustedTLSServer(const TLSCertificateOptions& options = {}, std::string answer = "");
    ~UntrustedTLSServer();
    UntrustedTLSServer(const UntrustedTLSServer&) = delete;
    UntrustedTLSServer& operator=(const UntrustedTLSServer&) = delete;

    /// "https://127.0.0.1:PORT/"; the certificate is for that address.
    std::string url() const;

    /// Its certificate (DER), for who wants to trust it all the same.
    std::string certificate() const;

    /// How many clients came.
    int connectionCount() const;

    /// Everything that came through after a handshake.
    std::string received() const;

  private:
    struct State;
    std::unique_ptr<State> mState;
};

}  // namespace testsupport
