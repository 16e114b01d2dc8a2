#pragma once

#include "QVPlatform/HTTPClient.h"

#include <any>
#include <string>
#include <string_view>
#include <utility>

namespace testsupport {

/// A request to an address that is known to be sound.
inline qv::HTTPRequest requestTo(const std::string& address, std::string method = "GET") {
    return {.method = std::move(method), .url = qv::URL::URLWithString(address).value()};
}

inline qv::HTTPResponse send(const qv::HTTPRequest& request) {
    return qv::HTTPClient::sendSynchronousRequest(request);
}

inline qv::Data dataOf(std::string_view text) {
    return {text.begin(), text.end()};
}

/// The body as text; "(absent)" when there is none.
inline std::string bodyOf(const qv::HTTPResponse& response) {
    return response.body ? std::string(response.body->begin(), response.body->end()) : "(absent)";
}

/// The code of the transport error; 0 when there is none.
inline long errorCodeOf(const qv::HTTPResponse& response) {
    return response.error ? response.error->code : 0;
}

inline long codeOf(qv::HTTPErrorCode code) {
    return static_cast<long>(code);
}

/// What the transport error says; empty when there is none.
inline std::string errorTextOf(const qv::HTTPResponse& response) {
    if (!response.error) return {};
    return std::any_cast<std::string>(response.error->userInfo.at(std::string(qv::kErrorDescriptionKey)));
}

}  // namespace testsupport
