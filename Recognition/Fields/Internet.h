#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qv::recognition {

/// A host name as printed in an e-mail address or a link, repaired where the engine lost a dot that nothing else
/// explains: "mywebsitecom" → "mywebsite.com", "acme,com" → "acme.com". Nothing when it is none: no known top-level
/// domain, an empty label, a character that no host name has.
std::optional<std::string> hostName(std::string_view text);

/// Whether the text up to its first "/" is a host name as it stands.
bool isHostName(std::string_view text);

/// The label that a firm registered: "acme" of "www.mail.acme.co.uk". Folded.
std::string registeredLabel(std::string_view host);

/// The host of an e-mail address or of a link, without "www.", in lower case; empty when there is none.
std::string hostOf(std::string_view emailOrLink);

/// The country that a host name's ending stands for, as an ISO code in capitals ("DE"); empty for a general ending.
std::string countryOfHost(std::string_view host);

}  // namespace qv::recognition
