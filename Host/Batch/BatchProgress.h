#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <optional>
#include <string>

namespace qvhost {

/// How far a batch has come.
struct BatchCount {
    std::size_t total = 0;
    std::size_t done = 0;
    std::size_t failed = 0;
};

/// A line of at most `width` columns: a bar, how many of how many, cards in a second, the time that is left, failures.
/// What does not fit is left out, the bar first. `rate` is 0 while nobody knows.
std::string progressLine(const BatchCount& count, double rate, std::size_t width);

/// Seconds as people say them: "0:42", "1:02:03".
std::string durationText(double seconds);

/// Shows how a batch goes on: on a terminal a line that is kept up to date, elsewhere a line for each card. On standard
/// error. One thread.
class BatchProgress {
  public:
    using Clock = std::chrono::steady_clock;

    BatchProgress(std::size_t total, std::size_t done);
    ~BatchProgress();
    BatchProgress(const BatchProgress&) = delete;
    BatchProgress& operator=(const BatchProgress&) = delete;

    /// A card came to its end; `words` say how, and are shown where there is no bar.
    void add(const std::string& words, bool failed);
    /// To be called now and then: draws what has changed, ten times in a second at most.
    void show();

    /// Cards in a second, of late.
    double rate() const;

  private:
    BatchCount mCount;
    bool mIsTerminal;
    /// When the last cards came to their ends.
    std::deque<Clock::time_point> mEnds;
    std::optional<Clock::time_point> mShown;
    std::string mLine;
};

}  // namespace qvhost
