#pragma once

#include "Command/Command.h"

#include <string>

namespace qvhost {

/// `parse RESULT.xml`: what the parser makes of a recognition server's answer.
class ParseCommand : public Command {
  public:
    CLI::App* describe(CLI::App& program) override;
    ExitStatus run() override;

  private:
    std::string mFile;
    bool mJSON = false;
};

}  // namespace qvhost
