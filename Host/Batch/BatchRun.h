#pragma once

#include "Batch/BatchFolder.h"
#include "Batch/BatchLists.h"
#include "Batch/BatchProgress.h"
#include "Batch/CardQueue.h"
#include "Batch/CardWriter.h"
#include "People/PersonSteps.h"
#include "Recognition/RecognitionServer.h"

#include <cstddef>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace qvhost {

/// What came of a batch.
struct BatchOutcome {
    std::size_t read = 0;
    std::vector<IndexPage::Failed> failed;
    /// Cards that nobody came to, because the batch ended early.
    std::size_t left = 0;
    /// Why it ended early, for the person who waits; absent when it did not.
    std::optional<Failure> stopped;
    /// What people should know of cards that were read, and of how many.
    std::map<std::string, std::size_t> remarks;
    ExitStatus status = ExitStatus::Done;
};

/// Reads the cards of a batch, several at once but only so many in memory, and writes each when it is read. A server of
/// our own that dies is started again; what it was reading is then read card by card, until the one is found that it
/// dies of.
class BatchRun {
  public:
    struct Settings {
        std::optional<std::string> language;
        /// Whether each card is printed as an object on one line.
        bool printsJSON = false;
        /// Cards that were finished before.
        std::size_t finished = 0;
    };

    /// `steps` may be null. `failed` is what failed already.
    BatchRun(const BatchFolder& folder, RecognitionServer& server, PersonSteps* steps, Settings settings,
             std::vector<IndexPage::Failed> failed);

    /// To be called once.
    BatchOutcome run(std::vector<PlannedCard> cards);

  private:
    bool goesOn() const;
    void fill();
    void send(PlannedCard planned, bool isAlone);
    std::optional<ServerAccess> access();
    void land(CardQueue::Landing landing);
    bool isLostWithServer(const CardQueue::Landing& landing);
    void keep(CardQueue::Landing landing);
    void finish(ReadCard card, const BatchCard& pictures);
    void fail(const PlannedCard& planned, const std::string& reason);
    void countServerFailures(const ScanOutcome& outcome);
    void print(const JSON::Value& object);
    void stop(Failure failure);
    void worsen(ExitStatus status);

    const BatchFolder& mFolder;
    RecognitionServer& mServer;
    PersonSteps* mSteps;
    Settings mSettings;
    BatchLists mLists;
    BatchOutcome mOutcome;
    std::deque<PlannedCard> mWaiting;
    /// Those among which is one that the server died of.
    std::deque<PlannedCard> mSuspects;
    CardQueue mQueue;
    std::optional<BatchProgress> mProgress;
    ServerAccess mAccess;
    int mStartsInVain = 0;
    int mUnreachable = 0;
    int mUnreadable = 0;
};

}  // namespace qvhost
