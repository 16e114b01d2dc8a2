#include "Batch/Interruption.h"

#include <atomic>

namespace qvhost {
namespace {

// The handler may touch nothing else.
static_assert(std::atomic<int>::is_always_lock_free);
std::atomic<int> received{0};

void remember(int signal) {
    received = signal;
}

}  // namespace

Interruption::Interruption() {
    received = 0;
    for (int i = 0; i < 3; ++i) {
        struct sigaction action = {};
        action.sa_handler = remember;
        ::sigemptyset(&action.sa_mask);
        // With the second one its usual meaning is back. Waiting calls go on: nobody else looks for this.
        action.sa_flags = static_cast<int>(SA_RESETHAND) | SA_RESTART;
        ::sigaction(kSignals[i], nullptr, &mBefore[i]);
        // Who started this program wants it to ignore that signal, as with nohup.
        if (mBefore[i].sa_handler == SIG_IGN) continue;
        ::sigaction(kSignals[i], &action, nullptr);
    }
}

Interruption::~Interruption() {
    for (int i = 0; i < 3; ++i)
        ::sigaction(kSignals[i], &mBefore[i], nullptr);
}

int Interruption::signal() {
    return received;
}

}  // namespace qvhost
