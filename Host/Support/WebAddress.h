#pragma once

#include <string>

namespace qvhost::WebAddress {

/// Why an address given on the command line cannot be used; empty when it can. Only http and https are of use, and a
/// user name or password in it is refused without being repeated: arguments are seen by everybody on the machine.
/// `example` is an address as it should be, `advice` where secrets go instead.
std::string objectionTo(const std::string& url, const std::string& example, const std::string& advice);

}  // namespace qvhost::WebAddress
