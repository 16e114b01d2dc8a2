#pragma once

#include "Faults/FaultShims.h"

namespace faults {

/// The clocks run faster while this lives, so that a time-out of a minute is over in less than a second.
class SwiftClock {
  public:
    explicit SwiftClock(long factor) { qvFaultsSetClockSpeed(factor); }
    ~SwiftClock() { qvFaultsSetClockSpeed(1); }
    SwiftClock(const SwiftClock&) = delete;
    SwiftClock& operator=(const SwiftClock&) = delete;
};

}  // namespace faults
