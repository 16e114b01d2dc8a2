#pragma once

#include "Recogniser.h"
#include "Server/Histogram.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace qv::recognition {

/// How a request for a card ended.
enum class Outcome {
    Read,          ///< fields were found
    NothingFound,  ///< a picture without any
    NoPicture,
    Failed,
    Overloaded,  ///< the waiting line was full
    Stopping,
    HungUp,      ///< the client was gone before its turn came
    Incomplete,  ///< the client went away, or took too long, before it had sent all of its request
    Unauthorized,
    TooLarge,
    Malformed,
    NotFound,
    WrongMethod,
};

/// What the server is doing at this moment.
struct Load {
    std::size_t workers = 0;
    std::size_t busy = 0;
    std::size_t waiting = 0;
    std::size_t places = 0;
    std::size_t connections = 0;
};

/// Counts what the server has done since it began, and writes it down for Prometheus. Nothing in it comes from a card
/// or a request but numbers. Belongs to the server's thread.
class Metrics {
  public:
    void count(Outcome outcome) { ++mOutcomes[static_cast<std::size_t>(outcome)]; }
    /// A picture that a worker looked at: how long it had waited for that, and what came of it.
    void addRecognition(std::chrono::microseconds waited, const Recognition& recognition);
    /// The time from a request's last byte to its result.
    void addRequest(std::chrono::microseconds time) { mRequests.add(time); }

    /// Everything, with the figures of the process itself.
    std::string text(const Load& load) const;

  private:
    static constexpr std::size_t kOutcomes = static_cast<std::size_t>(Outcome::WrongMethod) + 1;

    std::array<std::uint64_t, kOutcomes> mOutcomes{};
    std::uint64_t mFields = 0;
    std::uint64_t mCutShort = 0;
    std::map<std::string, Histogram> mStages;
    Histogram mWaiting;
    Histogram mRequests;
};

}  // namespace qv::recognition
