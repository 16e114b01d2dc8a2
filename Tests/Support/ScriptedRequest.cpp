#include "Support/ScriptedRequest.h"

#include <strings.h>

#include <sstream>

namespace testsupport {

namespace {

void readHeaderLine(ScriptedRequest& request, const std::string& line) {
    const std::size_t colon = line.find(':');
    if (colon == std::string::npos) return;
    const std::size_t start = line.find_first_not_of(' ', colon + 1);
    request.headers.emplace_back(line.substr(0, colon), start == std::string::npos ? "" : line.substr(start));
}

}  // namespace

ScriptedRequest ScriptedRequest::fromHead(std::string head) {
    ScriptedRequest request;
    std::istringstream lines(head);
    lines >> request.method >> request.target;
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        readHeaderLine(request, line);
    }
    request.head = std::move(head);
    return request;
}

std::optional<std::string> ScriptedRequest::header(std::string_view name) const {
    const std::string wanted(name);
    for (const auto& [key, value] : headers) {
        if (::strcasecmp(key.c_str(), wanted.c_str()) == 0) return value;
    }
    return std::nullopt;
}

std::size_t ScriptedRequest::contentLength() const {
    const auto length = header("Content-Length");
    return length ? std::stoul(*length) : 0;
}

}  // namespace testsupport
