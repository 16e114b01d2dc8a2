#pragma once

#include "QVPlatform/HTTPClient.h"
#include "QVSocialSearch/QVCardDAVAddressBook.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

/// What a server asks for in "WWW-Authenticate: Digest …": its parameters, names in lower case. Nothing for any other
/// scheme, and for what this client cannot answer.
using DigestChallenge = std::map<std::string, std::string>;
std::optional<DigestChallenge> digestChallenge(std::string_view header);

/// The answer to it (RFC 7616, with MD5 and the quality "auth", or none as in RFC 2069).
struct DigestRequest {
    std::string method;
    std::string target;
    std::string clientNonce;
    std::uint32_t count = 1;
};
std::string digestAnswer(const DigestChallenge& challenge, const std::string& user, const std::string& password,
                         const DigestRequest& request);

/// The header that tells who asks. Threads may share it.
class DAVAuthorization {
  public:
    explicit DAVAuthorization(QVCardDAVCredentials credentials) : mCredentials(std::move(credentials)) {}

    bool hasCredentials() const { return mCredentials.token || mCredentials.user; }

    /// The value of "Authorization" for a request; absent without credentials.
    QVString header(const std::string& method, const qv::URL& url);

    /// Takes in what a refusing answer asks for. True when the same request may succeed now.
    bool takesChallenge(const qv::HTTPResponse& response);

  private:
    const QVCardDAVCredentials mCredentials;
    std::mutex mMutex;
    std::optional<DigestChallenge> mChallenge;
    std::uint32_t mCount = 0;
};
