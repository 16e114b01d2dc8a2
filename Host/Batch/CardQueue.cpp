#include "Batch/CardQueue.h"

#include "QVCardScan/QVBizCardManager.h"
#include "Support/MainWork.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

namespace qvhost {

/// Filled on the library's threads.
struct CardQueue::Arrivals {
    std::mutex mutex;
    std::condition_variable came;
    std::deque<ScanOutcome> outcomes;

    void add(ScanOutcome outcome) {
        const std::lock_guard lock(mutex);
        outcomes.push_back(std::move(outcome));
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
    const auto noteUUID = CardScan::start(
        request, &flight.server, [arrivals = mArrivals](ScanOutcome outcome) { arrivals->add(std::move(outcome)); });
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
    return landing;
}

}  // namespace qvhost
