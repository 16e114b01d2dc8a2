#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What stands before and behind the "@" of an e-mail address: the first without the quotes and backslashes that mail
/// needs (RFC 5321, 4.1.2), the second as it goes out on the wire.
struct WebFingerAccount {
    std::string user;
    std::string domain;
};

/// Nothing for what is no address of a domain of the internet.
std::optional<WebFingerAccount> accountOfAddress(std::string_view address);

/// Path and query of the question for an account: "/.well-known/webfinger?resource=acct%3A…" (RFC 7033, 4.1 and 10.1;
/// RFC 7565 for the acct URI).
std::string webFingerQuery(const WebFingerAccount& account);
