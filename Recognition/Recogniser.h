#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace qv::recognition {

/// How long a stage took, for the log and the metrics.
struct StageTime {
    const char* stage = "";  ///< one of a few words that are constants of the program
    std::chrono::microseconds time{0};
};

/// What became of one picture.
struct Recognition {
    bool isPicture = false;  ///< false: the bytes could not be decoded
    std::string xml;         ///< the answer, when `isPicture`
    int fields = 0;
    bool isCutShort = false;  ///< the time limit came first: this is what was found by then
    std::vector<StageTime> stages;
    std::string keptAs;  ///< where the stages of this card were kept, when that is asked for
    std::string remark;  ///< for the log, never with text from the card; empty when there is nothing to say
};

/// Reads cards, one after the other. Belongs to one thread.
class Recogniser {
  public:
    virtual ~Recogniser() = default;
    Recogniser(const Recogniser&) = delete;
    Recogniser& operator=(const Recogniser&) = delete;

    /// `contentLanguage` is the request's header of that name, empty when it has none.
    virtual Recognition recognise(std::span<const std::uint8_t> jpeg, const std::string& contentLanguage) = 0;

    /// Called between two cards, when nobody waits for the one before any more: time to put things in order.
    virtual void rest() {}

  protected:
    Recogniser() = default;
};

}  // namespace qv::recognition
