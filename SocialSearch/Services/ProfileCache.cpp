#include "Services/ProfileCache.h"

#include <algorithm>
#include <utility>

std::optional<ProfileCache::Answer> ProfileCache::answerForKey(const std::string& key) const {
    const std::lock_guard lock(mMutex);
    const Time now = mClock();
    for (const Entry& entry : mEntries) {
        if (entry.key == key && now >= entry.begin && now < entry.end) return entry.answer;
    }
    return std::nullopt;
}

void ProfileCache::store(const std::string& key, Answer answer, std::chrono::seconds life) {
    const std::lock_guard lock(mMutex);
    forget(key);
    const Time now = mClock();
    mEntries.push_back({key, std::move(answer), now, now + life});
    mPictureBytes += pictureBytesOf(mEntries.back());
    makeRoom();
}

std::size_t ProfileCache::pictureBytesOf(const Entry& entry) {
    const auto* picture =
        entry.answer && entry.answer->addressBookAvatarData() ? &*entry.answer->addressBookAvatarData() : nullptr;
    return picture != nullptr ? picture->size() : 0;
}

void ProfileCache::forget(const std::string& key) {
    const auto old =
        std::find_if(mEntries.begin(), mEntries.end(), [&](const Entry& entry) { return entry.key == key; });
    if (old == mEntries.end()) return;
    mPictureBytes -= pictureBytesOf(*old);
    mEntries.erase(old);
}

void ProfileCache::makeRoom() {
    while (mEntries.size() > kMostEntries || (mPictureBytes > kMostPictureBytes && mEntries.size() > 1)) {
        mPictureBytes -= pictureBytesOf(mEntries.front());
        mEntries.pop_front();
    }
}
