#pragma once

#include <string>
#include <string_view>

/// Which network a link leads to is told by its host, and by nothing that is said about it.

/// "LINKEDIN", "FACEBOOK" or "TWITTER"; empty for any other link, for one that is not http or https, and for what is no
/// link.
std::string networkOfLink(const std::string& link);

/// The first segment of the link's path, without percent escapes; empty when there is none.
std::string handleOfLink(const std::string& link);

/// Whether a host is the domain itself or lies in it; both in lower case.
bool isHostInDomain(std::string_view host, std::string_view domain);
