#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace testsupport {

/// Collects what is logged, on any thread, as long as it lives; the system log has its place back afterwards. One at a
/// time. Threads that log later than it lives do no harm.
class CapturedLog {
  public:
    CapturedLog();
    ~CapturedLog();
    CapturedLog(const CapturedLog&) = delete;
    CapturedLog& operator=(const CapturedLog&) = delete;

    /// In the order logged.
    std::vector<std::string> messages() const;

    /// How many messages are exactly this text.
    std::size_t count(std::string_view message) const;
    bool contains(std::string_view message) const { return count(message) > 0; }

    /// Whether the text occurs anywhere in any message; for what must never be logged.
    bool mentions(std::string_view text) const;

    void clear();

  private:
    struct State;
    std::shared_ptr<State> mState;
};

}  // namespace testsupport
