#pragma once

#include <csignal>

namespace qvhost {

/// While this lives, the first signal to end (Ctrl-C, the system's going down, a closed terminal) is only remembered,
/// so that the program ends in good order; the second ends it at once. One at a time.
class Interruption {
  public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    /// The signal that came; 0 for none.
    static int signal();

  private:
    static constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};
    struct sigaction mBefore[3] = {};
};

}  // namespace qvhost
