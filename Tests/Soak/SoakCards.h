#pragma once

#include "QVCardScan/QVCardProcessingRequest.h"
#include "QVCardScan/QVCardProcessingResponse.h"

#include <memory>
#include <string>

namespace soak {

/// One card to be asked for.
struct SoakCard {
    std::shared_ptr<QVCardProcessingRequest> request;
    bool isCancelled = false;  ///< as soon as it was added
};

/// Where the soak's cards come from, and what has to become of them. Called on the soak's thread, but for `problemOf`.
class SoakCards {
  public:
    virtual ~SoakCards() = default;

    /// The card of that number, from 0.
    virtual SoakCard card(int number) const = 0;
    /// What is wrong with that card's response; empty when nothing is. On any thread.
    virtual std::string problemOf(int number, const QVCardProcessingResponse& response) const = 0;
    /// Whether that card's person is to be searched and saved.
    virtual bool hasPerson(int number) const = 0;
};

}  // namespace soak
