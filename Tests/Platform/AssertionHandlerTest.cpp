#include "QVPlatform/AssertionHandler.h"
#include "Support/CapturedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

using qv::AssertionFailure;
using qv::AssertionHandler;
using testing::ElementsAre;
using testsupport::CapturedLog;

namespace {

class AssertionHandlerTest : public testing::Test {
  protected:
    void TearDown() override { AssertionHandler::setHandler({}); }

    const AssertionFailure mFailure{"It must be there!", "doIt", "Doer", 155};
};

TEST_F(AssertionHandlerTest, LogsAndReturnsByDefault) {
    const CapturedLog log;
    AssertionHandler::handleFailure(mFailure);
    EXPECT_THAT(log.messages(), ElementsAre("<ERROR> Assertion failed: It must be there! in doIt (Doer:155)"));
}

TEST_F(AssertionHandlerTest, HandsEverythingToTheHostsHandler) {
    const CapturedLog log;
    std::string seen;
    AssertionHandler::setHandler([&](const AssertionFailure& failure) {
        seen = std::string(failure.description) + "|" + std::string(failure.function) + "|" +
               std::string(failure.file) + "|" + std::to_string(failure.line);
    });
    AssertionHandler::handleFailure(mFailure);
    EXPECT_EQ(seen, "It must be there!|doIt|Doer|155");
    EXPECT_TRUE(log.messages().empty());
}

TEST_F(AssertionHandlerTest, LogsWhatTheHandlerThrows) {
    const CapturedLog log;
    AssertionHandler::setHandler([](const AssertionFailure&) { throw std::logic_error("stop"); });
    EXPECT_NO_THROW(AssertionHandler::handleFailure(mFailure));
    EXPECT_THAT(log.messages(), ElementsAre("<ERROR> Exception from the host's assertion handler: stop"));
}

TEST_F(AssertionHandlerTest, TakesTheDefaultBack) {
    const CapturedLog log;
    int calls = 0;
    AssertionHandler::setHandler([&](const AssertionFailure&) { ++calls; });
    AssertionHandler::setHandler({});
    AssertionHandler::handleFailure(mFailure);
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(log.messages().size(), 1U);
}

TEST_F(AssertionHandlerTest, MayBeReplacedByTheHandlerItself) {
    int calls = 0;
    AssertionHandler::setHandler([&](const AssertionFailure&) {
        ++calls;
        AssertionHandler::setHandler({});
    });
    const CapturedLog log;
    AssertionHandler::handleFailure(mFailure);
    AssertionHandler::handleFailure(mFailure);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(log.messages().size(), 1U);
}

}  // namespace
