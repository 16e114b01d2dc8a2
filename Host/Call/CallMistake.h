#pragma once

#include <string>

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace qvhost {

/// What is wrong with a call of the program, in the words that the rest of the program uses.
struct CallMistake {
    /// One sentence or two: what is wrong, and what was probably meant. Never the value of an option.
    std::string message;
    /// The call that shows the help for what was called.
    std::string help;

    /// Out of what the parser of the arguments found; `program` is in the state that it left.
    static CallMistake of(const CLI::ParseError& error, const CLI::App& program);
};

}  // namespace qvhost
