#pragma once

#include "Batch/BatchPlan.h"
#include "People/KnownContacts.h"
#include "Scan/CardScan.h"

#include <chrono>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qvhost {

/// The cards of a batch that are with the library: handed over, not taken back yet. For one thread.
class CardQueue {
  public:
    struct Flight {
        PlannedCard planned;
        std::vector<PictureState> states;
        std::vector<CardPicture> pictures;
        /// Whom the card is merged with; null when contacts are not compared.
        std::shared_ptr<KnownContacts> known;
        ServerAccess server;
        /// What is wrong with the card before it is read; empty when nothing is.
        std::string problem;
        /// Whether it is the only one, so that what happens to the server is its doing.
        bool isAlone = false;
    };
    struct Landing {
        Flight flight;
        ScanOutcome outcome;
    };

    CardQueue();
    /// Cancels what is still there; nobody waits for it.
    ~CardQueue();
    CardQueue(const CardQueue&) = delete;
    CardQueue& operator=(const CardQueue&) = delete;

    std::size_t size() const { return mFlights.size(); }
    /// False when the library refuses the card.
    bool add(Flight flight, const std::optional<std::string>& language);
    /// The next card that was read; nothing when none is within that time.
    std::optional<Landing> take(std::chrono::milliseconds within);

  private:
    struct Arrivals;
    std::shared_ptr<Arrivals> mArrivals;
    /// By the note's UUID.
    std::map<std::string, Flight> mFlights;
};

}  // namespace qvhost
