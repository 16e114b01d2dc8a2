#pragma once

#include "Faults/Aftermath.h"
#include "QVCardScan/QVCardProcessingResponse.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace faults {

/// What is sent with every card and must never be seen elsewhere.
inline constexpr const char* kToken = "t0ken-that-nobody-else-may-see";

/// Cards through a manager as a host sends them: as many bad ones as the queue has places, and a good one behind them,
/// which has to wait until one of the places is free again.
class RecognitionRoad {
  public:
    static constexpr std::size_t kPlaces = 3;

    /// Sends them, the bad ones to this address and the good one to a good server, and waits until all have ended. The
    /// clocks run at that speed but for the good one, whose server may have other things to do.
    /// Fails the running test unless each ended exactly once, the good one was read, and nothing of the token was
    /// logged. Returns what became of the bad ones.
    static std::vector<std::shared_ptr<QVCardProcessingResponse>> send(const std::string& url, long speed = 1);

    /// The same with good servers only: the first cards are sent while something else is wrong, from `begin` to `end`,
    /// and the good one when it is over.
    static std::vector<std::shared_ptr<QVCardProcessingResponse>> sendWhile(const std::function<void()>& begin,
                                                                            const std::function<void()>& end);

    /// The same before anything is measured, with good cards only: what is loaded once is loaded then.
    static void warmUp();
};

}  // namespace faults
