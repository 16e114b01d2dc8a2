#pragma once

#include "Answer/ResultFile.h"
#include "Command/Command.h"
#include "Support/Result.h"

#include <optional>
#include <string>
#include <vector>

namespace qvhost {

/// `note RESULT.xml [RESULT2.xml]`: the contact note for a recognition server's answers, without pictures.
class NoteCommand : public Command {
  public:
    CLI::App* describe(CLI::App& program) override;
    ExitStatus run() override;

  private:
    Result<std::vector<ResultFile>> readAll() const;

    std::string mFront;
    std::optional<std::string> mBack;
    bool mContactInfo = false;
};

}  // namespace qvhost
