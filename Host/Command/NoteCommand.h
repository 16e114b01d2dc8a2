#pragma once

#include "Command/Command.h"

#include <optional>
#include <string>

namespace qvhost {

/// `note RESULT.xml [RESULT2.xml]`: the contact note for a recognition server's answers, without pictures.
class NoteCommand : public Command {
  public:
    CLI::App* describe(CLI::App& program) override;
    ExitStatus run() override;

  private:
    std::string mFront;
    std::optional<std::string> mBack;
    bool mContactInfo = false;
};

}  // namespace qvhost
