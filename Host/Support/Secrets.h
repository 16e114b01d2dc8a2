#pragma once

#include "Support/Result.h"

#include <optional>
#include <string>
#include <vector>

/// Passwords, tokens and keys. They come from a file or from the environment, never from an argument, which everybody
/// on the machine can read; they are part of no message.
namespace qvhost::Secrets {

/// Where some texts that belong together come from, such as a user name and a password.
struct Source {
    /// A file with one text on each line; goes before the environment.
    std::optional<std::string> file;
    /// The environment variables, one for each text.
    std::vector<const char*> variables;
    /// The texts in words, for messages: "a user name on the first line and the password on the second".
    std::string whatIsNeeded;
};

/// The texts; absent when there is no file and none of the variables is set. Failures are `WrongCall`.
Result<std::optional<std::vector<std::string>>> read(const Source& source);

}  // namespace qvhost::Secrets
