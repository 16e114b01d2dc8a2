#pragma once

#include "Page/CardPile.h"
#include "Recognition/RecognitionServer.h"
#include "Scan/CardScan.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace qvhost {

/// Reads the cards of a pile, one after the other, on a thread of its own.
class PileReader {
  public:
    PileReader(CardPile& pile, RecognitionServer& server, QVString language);
    /// The pile has to be stopped first. Waits for a card that is being read; see `hasEnded`.
    ~PileReader();
    PileReader(const PileReader&) = delete;
    PileReader& operator=(const PileReader&) = delete;

    /// Whether it has ended within the time, after the pile was stopped.
    bool hasEnded(std::chrono::milliseconds within);

  private:
    void work();
    void read(const PileCard& card);
    void fail(const PileCard& card, const std::string& problem);
    void finish(const PileCard& card, const ScanOutcome& outcome);
    /// Changes the card if its pictures are still those that were read.
    void report(const PileCard& card, const CardPile::Change& how);

    CardPile& mPile;
    RecognitionServer& mServer;
    const QVString mLanguage;
    std::mutex mMutex;
    std::condition_variable mChanged;
    bool mHasEnded = false;
    std::thread mThread;
};

}  // namespace qvhost
