#include "QVPlatform/Operation.h"
#include "QVPlatform/OperationQueue.h"
#include "Support/CapturedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using qv::Operation;
using qv::OperationQueue;
using testing::ElementsAre;
using testsupport::CapturedLog;

namespace {

class BlockOperation : public Operation {
  public:
    explicit BlockOperation(std::function<void(BlockOperation&)> work) : mWork(std::move(work)) {}
    void main() override { mWork(*this); }

  private:
    std::function<void(BlockOperation&)> mWork;
};

std::shared_ptr<BlockOperation> makeOperation(std::function<void(BlockOperation&)> work) {
    return std::make_shared<BlockOperation>(std::move(work));
}

void run(const std::shared_ptr<Operation>& operation) {
    OperationQueue queue(1);
    queue.addOperation(operation);
    queue.waitUntilAllOperationsAreFinished();
}

TEST(Operation, GoesFromWaitingOverExecutingToFinished) {
    bool executingInside = false;
    bool finishedInside = true;
    const auto operation = makeOperation([&](BlockOperation& self) {
        executingInside = self.isExecuting();
        finishedInside = self.isFinished();
    });
    EXPECT_FALSE(operation->isExecuting());
    EXPECT_FALSE(operation->isFinished());
    EXPECT_FALSE(operation->isCancelled());
    run(operation);
    EXPECT_TRUE(executingInside);
    EXPECT_FALSE(finishedInside);
    EXPECT_FALSE(operation->isExecuting());
    EXPECT_TRUE(operation->isFinished());
    EXPECT_FALSE(operation->isCancelled());
}

TEST(Operation, RunsMainOfACancelledOperationToo) {
    bool cancelledInside = false;
    int completions = 0;
    const auto operation = makeOperation([&](BlockOperation& self) { cancelledInside = self.isCancelled(); });
    operation->setCompletionBlock([&] { ++completions; });
    operation->cancel();
    run(operation);
    EXPECT_TRUE(cancelledInside);
    EXPECT_TRUE(operation->isFinished());
    EXPECT_TRUE(operation->isCancelled());
    EXPECT_EQ(completions, 1);
}

TEST(Operation, IsNotInterruptedByCancelling) {
    bool reachedEnd = false;
    const auto operation = makeOperation([&](BlockOperation& self) {
        self.cancel();
        reachedEnd = true;
    });
    run(operation);
    EXPECT_TRUE(reachedEnd);
}

TEST(Operation, CompletesAfterMainAndIsFinishedThen) {
    std::vector<std::string> steps;
    const auto operation = makeOperation([&](BlockOperation&) { steps.push_back("main"); });
    operation->setCompletionBlock([&steps, weak = std::weak_ptr<Operation>(operation)] {
        const auto self = weak.lock();
        steps.push_back(self && self->isFinished() && !self->isExecuting() ? "completion" : "too early");
    });
    run(operation);
    EXPECT_THAT(steps, ElementsAre("main", "completion"));
}

TEST(Operation, MayGetItsCompletionBlockInsideMain) {
    int completions = 0;
    run(makeOperation([&](BlockOperation& self) { self.setCompletionBlock([&] { ++completions; }); }));
    EXPECT_EQ(completions, 1);
}

TEST(Operation, RunsOnlyTheLastCompletionBlockSet) {
    std::vector<int> ran;
    const auto operation = makeOperation([](BlockOperation&) {});
    operation->setCompletionBlock([&] { ran.push_back(1); });
    operation->setCompletionBlock([&] { ran.push_back(2); });
    run(operation);
    EXPECT_THAT(ran, ElementsAre(2));
}

TEST(Operation, IgnoresACompletionBlockSetTooLate) {
    int completions = 0;
    const auto operation = makeOperation([](BlockOperation&) {});
    run(operation);
    operation->setCompletionBlock([&] { ++completions; });
    run(makeOperation([](BlockOperation&) {}));
    EXPECT_EQ(completions, 0);
}

TEST(Operation, IsReleasedWithABlockThatHoldsIt) {
    auto operation = makeOperation([](BlockOperation&) {});
    const std::weak_ptr<Operation> weak = operation;
    operation->setCompletionBlock([operation] { EXPECT_TRUE(operation->isFinished()); });
    run(operation);
    operation.reset();
    EXPECT_TRUE(weak.expired());
}

TEST(Operation, EndsWithALogLineWhereItThrows) {
    const CapturedLog log;
    int completions = 0;
    const auto operation = makeOperation([](BlockOperation&) { throw std::runtime_error("broken"); });
    operation->setCompletionBlock([&] {
        ++completions;
        throw 7;
    });
    run(operation);
    EXPECT_TRUE(operation->isFinished());
    EXPECT_FALSE(operation->isExecuting());
    EXPECT_EQ(completions, 1);
    EXPECT_THAT(log.messages(), ElementsAre("<ERROR> Exception from an operation: broken",
                                            "<ERROR> Exception from a completion block"));
}

}  // namespace
