#pragma once

#include "Command/Command.h"
#include "Output/ResultFolder.h"
#include "People/PersonOptions.h"
#include "Recognition/ServerOptions.h"
#include "Scan/CardScan.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qvhost {

/// `scan FRONT [BACK]`: from photographs to the fields of a card and its contact note.
class ScanCommand : public Command {
  public:
    CLI::App* describe(CLI::App& program) override;
    ExitStatus run() override;

  private:
    std::vector<std::string> files() const;
    Result<ScanOutcome> scan(RecognitionServer& server, std::vector<CardPicture> pictures) const;
    ExitStatus report(const ScanOutcome& outcome, const PersonOutcome& person, const std::vector<CardPicture>& pictures,
                      const std::string& serverName) const;
    void sayWhatMatters(const ScanOutcome& outcome, const PersonOutcome& person, const std::string& serverName) const;
    ExitStatus writeFolder(const ScanOutcome& outcome, const std::vector<CardPicture>& pictures) const;
    std::string resultText(const ScanOutcome& outcome, const PersonOutcome& person, bool folderWritten) const;
    std::string folderText(const ScanOutcome& outcome) const;

    std::string mFront;
    std::optional<std::string> mBack;
    std::optional<std::string> mFolder;
    ServerOptions mServer;
    PersonOptions mPerson;
    bool mSkipNote = false;
    bool mJSON = false;
};

}  // namespace qvhost
