#include "Page/ChangeBell.h"

#include <gtest/gtest.h>

namespace qvhost {
namespace {

using Clock = ChangeBell::Clock;
using std::chrono::seconds;

class ChangeBellTest : public testing::Test {
  protected:
    void await(std::uint64_t seen, Clock::time_point until = Clock::time_point::max()) {
        mBell.await(seen, until, [this] { ++mTold; });
    }

    ChangeBell mBell;
    int mTold = 0;
};

TEST_F(ChangeBellTest, TellsAtOnceWhoHasNotSeenTheLastChange) {
    await(0);
    EXPECT_EQ(mTold, 1);
    await(mBell.count() + 1);
    EXPECT_EQ(mTold, 2) << "of another run of the program";
}

TEST_F(ChangeBellTest, TellsTheOthersOnceWhenSomethingChanges) {
    await(mBell.count());
    await(mBell.count());
    EXPECT_EQ(mTold, 0);
    mBell.ring();
    EXPECT_EQ(mTold, 2);
    mBell.ring();
    EXPECT_EQ(mTold, 2);
}

TEST_F(ChangeBellTest, TellsThoseWhoseTimeIsOver) {
    const Clock::time_point now{};
    await(mBell.count(), now + seconds(1));
    await(mBell.count(), now + seconds(2));
    mBell.expire(now);
    EXPECT_EQ(mTold, 0);
    mBell.expire(now + seconds(1));
    EXPECT_EQ(mTold, 1);
    mBell.expire(now + seconds(2));
    EXPECT_EQ(mTold, 2);
}

TEST_F(ChangeBellTest, LeavesNobodyWaitingAtTheEnd) {
    await(mBell.count());
    mBell.stop();
    EXPECT_EQ(mTold, 1);
    await(mBell.count());
    EXPECT_EQ(mTold, 2);
}

TEST_F(ChangeBellTest, WhoIsToldMayWaitAgain) {
    mBell.await(mBell.count(), Clock::time_point::max(), [this] { await(mBell.count()); });
    mBell.ring();
    EXPECT_EQ(mTold, 0);
    mBell.ring();
    EXPECT_EQ(mTold, 1);
}

}  // namespace
}  // namespace qvhost
