#pragma once

#include "QVSocialSearch/QVSocialProfile.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

/// What a service said of people, for as long as it holds. Bounded in entries and in the bytes of their pictures: the
/// oldest goes first. In memory only, because it tells whom the user has met. Any thread may call.
class ProfileCache {
  public:
    using Clock = std::function<std::chrono::system_clock::time_point()>;
    /// Null: there is nobody of that key.
    using Answer = std::shared_ptr<const QVSocialProfile>;

    static constexpr std::size_t kMostEntries = 256;
    static constexpr std::size_t kMostPictureBytes = std::size_t{32} << 20;

    explicit ProfileCache(Clock clock) : mClock(std::move(clock)) {}

    /// The answer under a key; absent when there is none that still holds.
    std::optional<Answer> answerForKey(const std::string& key) const;

    /// Keeps an answer, in place of the one that was there. The profile must not change any more.
    void store(const std::string& key, Answer answer, std::chrono::seconds life);

  private:
    using Time = std::chrono::system_clock::time_point;
    struct Entry {
        std::string key;
        Answer answer;
        /// A clock that was set back to before `begin` ends the entry's life as well.
        Time begin;
        Time end;
    };

    const Clock mClock;
    mutable std::mutex mMutex;
    /// The oldest first.
    std::deque<Entry> mEntries;
    std::size_t mPictureBytes = 0;

    static std::size_t pictureBytesOf(const Entry& entry);
    void forget(const std::string& key);
    void makeRoom();
};
