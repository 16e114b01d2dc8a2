#pragma once

#include "Support/ExitStatus.h"

namespace CLI {
class App;
}

namespace qvhost {

/// One thing the program can be asked to do.
class Command {
  public:
    virtual ~Command() = default;

    /// Adds the command with its options to the command line; called once, before `run`.
    virtual CLI::App* describe(CLI::App& program) = 0;

    virtual ExitStatus run() = 0;
};

}  // namespace qvhost
