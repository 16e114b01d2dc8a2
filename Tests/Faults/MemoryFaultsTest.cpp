#include "QVPlatform/Log.h"
#include "Source/Controller/ManagerFixtures.h"
#include "Support/FailingMemory.h"
#include "Support/Gate.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string_view>
#include <utility>

/// What a host hears of its card when memory gives out at any allocation of the thread that reads it, one after the
/// other.
namespace faults {
namespace {

using testsupport::Shortage;

/// What became of a card, in memory that was set aside before.
struct CardEnd {
    testsupport::Gate called;
    std::atomic<int> calls{0};
    bool failed = false;
    std::shared_ptr<QVCardProcessingResponse> response;
};

class MemoryThatGivesOut : public testing::TestWithParam<Shortage> {
  protected:
    MemoryThatGivesOut() {
        mServer.respond(scans::answer({scans::kName, scans::kTitle, scans::kEmail}));
        mManager.setupOperationQueue();
        mManager.setServerURL(mServer.url());
    }
    ~MemoryThatGivesOut() override { qv::Log::useSystemLog(); }

    /// One card, on whose thread so many allocations succeed before memory gives out.
    std::shared_ptr<CardEnd> readWith(long count) {
        qv::Log::setSink([count, begun = std::make_shared<std::atomic<bool>>(false)](std::string_view message) {
            if (message == managers::performing("card") && !begun->exchange(true))
                testsupport::failAfter(count, GetParam());
        });
        auto end = std::make_shared<CardEnd>();
        mManager.addRequest(scans::request("card"), [end](std::shared_ptr<QVCardProcessingResponse> response) {
            end->failed = testsupport::endFailing();
            end->response = std::move(response);
            ++end->calls;
            end->called.open();
        });
        return end;
    }

    testsupport::ScriptedServer mServer;
    QVBizCardManager mManager;
};

TEST_P(MemoryThatGivesOut, LeavesNoCardWithoutAnEnd) {
    long withoutNote = 0;
    for (long count = 0;; ++count) {
        const auto end = readWith(count);
        ASSERT_TRUE(end->called.waitFor()) << "nobody was told when " << count << " allocations were all there were";
        ASSERT_EQ(end->calls, 1) << count;
        const bool isRead = end->response && end->response->contactName() == "Jordan Example";
        if (!end->failed) {
            EXPECT_TRUE(isRead);
            break;
        }
        if (!isRead || !end->response->qvmlContent()) ++withoutNote;
    }
    EXPECT_GT(withoutNote, 100);
}

INSTANTIATE_TEST_SUITE_P(OfMemory, MemoryThatGivesOut, testing::Values(Shortage::OfOneAllocation, Shortage::Lasting),
                         [](const auto& shortage) {
                             return shortage.param == Shortage::Lasting ? "ForGood" : "AtOneAllocation";
                         });

}  // namespace
}  // namespace faults
