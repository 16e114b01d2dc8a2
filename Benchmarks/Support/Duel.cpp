#include "Support/Duel.h"

#include <algorithm>
#include <ctime>

namespace benchmarksupport {

namespace {

double millisecondsOf(clockid_t clock) {
    timespec now{};
    ::clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

Times repeated(const Contender& contender, int count) {
    const Times start = timesSoFar();
    for (int index = 0; index < count; ++index)
        contender();
    const Times end = timesSoFar();
    return {(end.processor - start.processor) / count, (end.wall - start.wall) / count};
}

/// Warms the contender up, too.
int repetitionsOf(const Contender& contender) {
    constexpr double kShortest = 2;
    int count = 1;
    while (count < (1 << 24) && repeated(contender, count).processor * count < kShortest)
        count *= 2;
    return count;
}

class Contest {
  public:
    explicit Contest(const Contender& contender) : mContender(contender), mCount(repetitionsOf(contender)) {}
    void runOnce() {
        const Times times = repeated(mContender, mCount);
        mProcessor.push_back(times.processor);
        mWall.push_back(times.wall);
    }
    Times medians() const { return {median(mProcessor), median(mWall)}; }

  private:
    const Contender& mContender;
    int mCount;
    std::vector<double> mProcessor;
    std::vector<double> mWall;
};

Row rowOf(const Duel& result, const std::string& rival) {
    Row row;
    row.rival = rival;
    row.ours = result.ours.processor;
    row.other = result.other.processor;
    row.oursOnWall = result.ours.wall;
    row.otherOnWall = result.other.wall;
    return row;
}

}  // namespace

Times timesSoFar() {
    return {millisecondsOf(CLOCK_PROCESS_CPUTIME_ID), millisecondsOf(CLOCK_MONOTONIC)};
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

Duel duel(const Contender& ours, const Contender& other, int rounds) {
    Contest first(ours);
    Contest second(other);
    for (int round = 0; round < rounds; ++round) {
        (round % 2 == 0 ? first : second).runOnce();
        (round % 2 == 0 ? second : first).runOnce();
    }
    return {first.medians(), second.medians()};
}

Row rowAgainstFloor(const Contender& ours, const Contender& floor, const std::string& floorName, double mostFloors) {
    Row row = rowOf(duel(ours, floor), floorName);
    row.figure = row.ours / row.other;
    row.limit = mostFloors;
    return row;
}

Row rowAgainstRival(const Contender& ours, const Contender& rival, const std::string& rivalName, double leastRatio) {
    Row row = rowOf(duel(ours, rival), rivalName);
    row.figure = row.other / row.ours;
    row.rule = Row::Rule::AtLeast;
    row.limit = leastRatio;
    return row;
}

}  // namespace benchmarksupport
