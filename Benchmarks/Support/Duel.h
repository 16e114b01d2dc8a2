#pragma once

#include "Support/Row.h"

#include <functional>
#include <string>
#include <vector>

namespace benchmarksupport {

using Contender = std::function<void()>;

/// Milliseconds of processor time (of the whole process) and of the clock on the wall.
struct Times {
    double processor = 0;
    double wall = 0;
};

/// The times up to now.
Times timesSoFar();

struct Duel {
    Times ours;
    Times other;
};

/// Runs both in turn, who begins changing each round, and gives each one's median over the rounds. Short contenders are
/// repeated within a round until it takes about two milliseconds; the times are of one run.
Duel duel(const Contender& ours, const Contender& other, int rounds = 15);

double median(std::vector<double> values);

/// Our processor time as a multiple of that of the floor: what nobody could do without.
Row rowAgainstFloor(const Contender& ours, const Contender& floor, const std::string& floorName, double mostFloors);

/// How many times as fast as the rival we are, by processor time.
Row rowAgainstRival(const Contender& ours, const Contender& rival, const std::string& rivalName, double leastRatio);

/// Keeps the compiler from leaving a result out.
template <typename Value>
inline void keep(const Value& value) {
    asm volatile("" : : "g"(&value) : "memory");
}

}  // namespace benchmarksupport
