#include "Soak/CardEnds.h"

#include "QVPlatform/Log.h"

#include <algorithm>
#include <chrono>

namespace soak {

namespace {

constexpr std::string_view kCancelledStart = "<INFO> Operation with ID: ";
constexpr std::string_view kCancelledEnd = " is cancelled!";

}  // namespace

CardEnds::CardEnds() {
    qv::Log::setSink([this](std::string_view message) { logged(message); });
}

CardEnds::~CardEnds() {
    qv::Log::setSink({});
}

void CardEnds::expect(const std::vector<std::string>& noteUUIDs) {
    const std::lock_guard lock(mMutex);
    mCounts.clear();
    mUnasked.clear();
    mEnded = 0;
    for (const std::string& noteUUID : noteUUIDs)
        mCounts[noteUUID] = {};
}

void CardEnds::completed(const std::string& noteUUID) {
    end(noteUUID, &Count::completions);
}

void CardEnds::logged(std::string_view message) {
    if (!message.starts_with(kCancelledStart) || !message.ends_with(kCancelledEnd)) return;
    message.remove_prefix(kCancelledStart.size());
    message.remove_suffix(kCancelledEnd.size());
    end(std::string(message), &Count::cancellations);
}

void CardEnds::end(const std::string& noteUUID, int Count::*kind) {
    const std::lock_guard lock(mMutex);
    const auto found = mCounts.find(noteUUID);
    if (found == mCounts.end()) {
        mUnasked.push_back(noteUUID);
        return;
    }
    Count& count = found->second;
    if (count.completions + count.cancellations == 0) ++mEnded;
    ++(count.*kind);
    mChanged.notify_all();
}

bool CardEnds::waitForAll(std::chrono::seconds pause) const {
    std::unique_lock lock(mMutex);
    while (mEnded < mCounts.size()) {
        if (!mChanged.wait_for(lock, pause, [this, before = mEnded] { return mEnded != before; })) return false;
    }
    return true;
}

std::size_t CardEnds::cancellations() const {
    const std::lock_guard lock(mMutex);
    return static_cast<std::size_t>(std::count_if(mCounts.begin(), mCounts.end(),
                                                  [](const auto& entry) { return entry.second.cancellations > 0; }));
}

std::vector<std::string> CardEnds::problems() const {
    const std::lock_guard lock(mMutex);
    std::vector<std::string> lines;
    for (const auto& [noteUUID, count] : mCounts) {
        if (count.completions + count.cancellations == 1) continue;
        lines.push_back(noteUUID + " was completed " + std::to_string(count.completions) + " times and cancelled " +
                        std::to_string(count.cancellations) + " times");
    }
    for (const std::string& noteUUID : mUnasked)
        lines.push_back(noteUUID + " ended, and nobody waited for it");
    return lines;
}

}  // namespace soak
