#include "Batch/CardQueue.h"

#include "QVCardScan/QVBizCardManager.h"
#include "Support/MainWork.h"

#include <condition_variable>
#include <list>
#include <mutex>
#include <utility>

namespace qvhost {

/// Filled on the library's threads.
struct CardQueue::Arrivals {
    std::mutex mutex;
    std::condition_variable came;
    std::list<ScanOutcome> outcomes;

    /// `place`, with one element, becomes the outcome's: it was made when there was memory.
    void add(ScanOutcome outcome, std::list<ScanOutcome>& place) {
        const std::lock_guard lock(mutex);
        place.front() = std::move(outcome);
        outcomes.splice(outcomes.end(), place);
        came.notify_one();
    }

    std::optional<ScanOutcome> take(std::chrono::milliseconds within) {
        std::unique_lock lock(mutex);
        if (!came.wait_for(lock, within, [this] { return !outcomes.empty(); })) return std::nullopt;
        std::optional<ScanOutcome> outcome = std::move(outcomes.front());
        outcomes.pop_front();
        return outcome;
    }
};

CardQueue::CardQueue() : mArrivals(std::make_shared<Arrivals>()) {
}

CardQueue::~CardQueue() {
    for (const auto& [noteUUID, flight] : mFlights)
        QVBizCardManager::sharedManager()->cancelRequestWithIDString(noteUUID);
}

bool CardQueue::add(Flight flight, const std::optional<std::string>& language) {
    const ScanRequest request{flight.pictures, language, /*skipNote=*/false};
    auto land = [arrivals = mArrivals, place = std::list<ScanOutcome>(1)](ScanOutcome outcome) mutable {
        arrivals->add(std::move(outcome), place);
    };
    const auto noteUUID = CardScan::start(request, &flight.server, std::move(land));
    if (!noteUUID) return false;
    mFlights.emplace(*noteUUID, std::move(flight));
    return true;
}

std::optional<CardQueue::Landing> CardQueue::take(std::chrono::milliseconds within) {
    runMainWork();
    std::optional<ScanOutcome> outcome = mArrivals->take(within);
    const auto found = outcome ? mFlights.find(outcome->noteUUID) : mFlights.end();
    if (found == mFlights.end()) return std::nullopt;
    Landing landing{std::move(found->second), *std::move(outcome)};
    mFlights.erase(found);
    landing.outcome.lookAtResponse();
    return landing;
}

}  // namespace qvhost
