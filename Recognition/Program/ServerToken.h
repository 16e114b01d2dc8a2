#pragma once

#include <string>

namespace qv::recognition {

/// The token that requests have to carry, or why there is none.
struct ServerToken {
    std::string token;
    std::string problem;  ///< a sentence for the person at the keyboard; empty when there is a token

    /// The first line of a file. No message ever holds any of it.
    static ServerToken fromFile(const std::string& path);
    /// The first line that the parent process writes to standard input; what follows it is left there.
    static ServerToken fromParent();
};

}  // namespace qv::recognition
