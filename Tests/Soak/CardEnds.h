#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace soak {

/// How often each card of a round ended, and how. A card ends when its completion is called, or when the library logs
/// that it was cancelled: there is no other sign of that. Any thread may tell.
class CardEnds {
  public:
    /// Takes over the library's log.
    CardEnds();
    ~CardEnds();
    CardEnds(const CardEnds&) = delete;
    CardEnds& operator=(const CardEnds&) = delete;

    /// Forgets everything but these, which are to end.
    void expect(const std::vector<std::string>& noteUUIDs);
    void completed(const std::string& noteUUID);

    /// Waits until all have ended. False when one did not within `pause` after the one before, which ends a broken run.
    bool waitForAll(std::chrono::seconds pause) const;
    std::size_t cancellations() const;
    /// A line for each card that ended not once, and for each end of a card that nobody asked for.
    std::vector<std::string> problems() const;

  private:
    struct Count {
        int completions = 0;
        int cancellations = 0;
    };
    void logged(std::string_view message);
    void end(const std::string& noteUUID, int Count::*kind);

    mutable std::mutex mMutex;
    mutable std::condition_variable mChanged;
    std::map<std::string, Count> mCounts;
    std::vector<std::string> mUnasked;
    std::size_t mEnded = 0;  ///< cards that have ended at least once
};

}  // namespace soak
