#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace testsupport {

/// A request as a `ScriptedServer` received it.
struct ScriptedRequest {
    /// The request line and the header lines, byte for byte, with the empty line.
    std::string head;
    std::string method;
    std::string target;
    /// In the order received, names as they were sent.
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;
    /// The connection that it came over, counted from 1.
    std::size_t connection = 0;

    /// Takes a head apart.
    static ScriptedRequest fromHead(std::string head);

    /// The first header of this name, in any case of letters.
    std::optional<std::string> header(std::string_view name) const;
    std::size_t contentLength() const;
};

}  // namespace testsupport
