#pragma once

#include "Batch/BatchInputs.h"
#include "Batch/BatchRun.h"
#include "Command/Command.h"
#include "People/PersonOptions.h"
#include "Recognition/ServerOptions.h"

#include <optional>
#include <string>
#include <vector>

namespace qvhost {

/// `batch DIR|FILE… -o OUT`: a pile of cards, each as `scan` has it, and lists of all of them.
class BatchCommand : public Command {
  public:
    CLI::App* describe(CLI::App& program) override;
    ExitStatus run() override;

  private:
    std::vector<BatchCard> cardsIn(const BatchInputs& inputs, const BatchFolder& folder) const;
    BatchWishes wishes(const BatchFolder& folder, const PersonSteps* steps) const;
    ExitStatus read(const BatchInputs& inputs, const BatchFolder& folder, RecognitionServer& server,
                    PersonSteps* steps) const;
    ExitStatus report(const BatchOutcome& outcome, const BatchInputs& inputs, std::size_t finished) const;

    std::vector<std::string> mNames;
    std::string mFolder;
    std::optional<int> mJobs;
    ServerOptions mServer;
    PersonOptions mPerson;
    bool mTakesPairsInOrder = false;
    bool mResumes = false;
    bool mJSON = false;
};

}  // namespace qvhost
