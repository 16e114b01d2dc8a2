#include "Page/ChangeBell.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace qvhost {

void ChangeBell::await(std::uint64_t seen, Clock::time_point until, std::function<void()> told) {
    {
        const std::lock_guard lock(mMutex);
        if (!mIsStopped && seen == mCount) {
            mWaiting.push_back({until, std::move(told)});
            return;
        }
    }
    told();
}

void ChangeBell::ring() {
    WaitingList waiting;
    {
        const std::lock_guard lock(mMutex);
        ++mCount;
        waiting.swap(mWaiting);
    }
    tell(waiting);
}

void ChangeBell::expire(Clock::time_point now) {
    WaitingList over;
    {
        const std::lock_guard lock(mMutex);
        const auto first = std::partition(mWaiting.begin(), mWaiting.end(),
                                          [&](const Waiting& waiting) { return waiting.until > now; });
        over.assign(std::make_move_iterator(first), std::make_move_iterator(mWaiting.end()));
        mWaiting.erase(first, mWaiting.end());
    }
    tell(over);
}

void ChangeBell::stop() {
    WaitingList waiting;
    {
        const std::lock_guard lock(mMutex);
        mIsStopped = true;
        waiting.swap(mWaiting);
    }
    tell(waiting);
}

std::uint64_t ChangeBell::count() const {
    const std::lock_guard lock(mMutex);
    return mCount;
}

void ChangeBell::tell(const WaitingList& waiting) {
    for (const Waiting& each : waiting)
        each.told();
}

}  // namespace qvhost
