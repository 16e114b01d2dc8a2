#pragma once

#include "Support/Result.h"

#include <string>

namespace qvhost {

/// A recognition server's answer that somebody kept.
struct ResultFile {
    std::string text;
    /// What messages call it.
    std::string name;

    /// From a file, or from standard input for `-`: strict UTF-8 text, 16 MiB at most. A picture is refused with a word
    /// on what reads pictures. Failures are `WrongCall`.
    static Result<ResultFile> read(const std::string& file);
};

}  // namespace qvhost
