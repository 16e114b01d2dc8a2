#pragma once

#include "Page/CardPile.h"
#include "People/AddressBookPlace.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <thread>

namespace qvhost {

/// Saves cards of a pile into the address book, one after the other, on a thread of its own: a server may take its
/// time, and two cards of one person are not to be saved at once.
class PileSaver {
  public:
    PileSaver(CardPile& pile, AddressBookPlace place);
    /// Waits for a card that is being saved; those that wait are not.
    ~PileSaver();
    PileSaver(const PileSaver&) = delete;
    PileSaver& operator=(const PileSaver&) = delete;

    /// Null when there is no such card, or it is being read or saved.
    CardPile::Card save(const std::string& identifier);
    /// The address book in words.
    const std::string& name() const { return mPlace.name; }
    void stop();
    /// Whether it has ended within the time, after it was stopped.
    bool hasEnded(std::chrono::milliseconds within);

  private:
    void work();
    bool next(std::string& identifier);
    void saveNow(const std::string& identifier);

    CardPile& mPile;
    const AddressBookPlace mPlace;
    std::mutex mMutex;
    std::condition_variable mChanged;
    std::deque<std::string> mWaiting;
    bool mIsStopped = false;
    bool mHasEnded = false;
    std::thread mThread;
};

}  // namespace qvhost
