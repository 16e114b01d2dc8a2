#pragma once

#include "QVCardScan/QVBizCardManager.h"
#include "Soak/CardEnds.h"
#include "Soak/People.h"
#include "Soak/Planted.h"
#include "Soak/SoakCards.h"

#include <atomic>
#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace soak {

/// Takes cards through the whole library in rounds, one manager for all of them. Between two rounds nothing is under
/// way: whatever is still held then, is held for good. Belongs to one thread.
class SoakRun {
  public:
    SoakRun(const SoakCards& cards, const std::string& serverURL, Planted planted);

    /// The cards from `first` to before `end`, until each has ended and its request is gone.
    void round(int first, int end);

    std::size_t completed() const { return mCompleted; }
    std::size_t cancelled() const { return mCancelled; }
    const People& people() const { return mPeople; }
    /// Everything that was not planned; the first of it, where there is much.
    const std::vector<std::string>& problems() const { return mProblems; }

  private:
    class HostContacts;

    void add(int number);
    void complete(int number, const std::string& noteUUID, const std::shared_ptr<QVCardProcessingResponse>& response);
    void awaitRelease();
    void note(std::string problem);

    const SoakCards& mCards;
    const Planted mPlanted;
    CardEnds mEnds;
    const std::shared_ptr<QVBizCardManager> mManager = std::make_shared<QVBizCardManager>();
    const std::shared_ptr<HostContacts> mHostContacts;
    People mPeople;
    std::vector<std::weak_ptr<QVCardProcessingRequest>> mRequests;
    std::atomic<std::size_t> mCompleted{0};
    std::size_t mCancelled = 0;
    std::mutex mMutex;
    People::Responses mPersons;
    std::vector<std::string> mProblems;
};

}  // namespace soak
