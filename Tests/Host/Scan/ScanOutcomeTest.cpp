#include "Output/ErrorText.h"
#include "Scan/CardScan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using qvhost::ScanOutcome;

TEST(ScanOutcomeTest, WithoutAResponseIsAFailureThatSaysSo) {
    ScanOutcome outcome;
    outcome.noteUUID = "note";
    outcome.pictureCount = 2;
    outcome.lookAtResponse();
    EXPECT_TRUE(outcome.wasGivenUp);
    ASSERT_TRUE(outcome.response);
    ASSERT_EQ(outcome.errors().size(), 1U);
    EXPECT_EQ(outcome.errors()[0].domain, "QVScanErrorDomain");
    EXPECT_EQ(outcome.errors()[0].code, 1);
    EXPECT_THAT(qvhost::ErrorText::message(outcome.errors()[0], "the server"),
                testing::HasSubstr("there was not enough memory"));
    EXPECT_FALSE(outcome.hasFields());
    EXPECT_FALSE(outcome.leftBackUnread());
    EXPECT_FALSE(qvhost::CardScan::connectionFailed(outcome));
    EXPECT_EQ(outcome.rotation(), 0);
}

TEST(ScanOutcomeTest, OfAnEmptyResponseIsNoFailure) {
    ScanOutcome outcome;
    outcome.response = std::make_shared<QVCardProcessingResponse>();
    outcome.lookAtResponse();
    EXPECT_FALSE(outcome.wasGivenUp);
    EXPECT_TRUE(outcome.errors().empty());
    EXPECT_EQ(outcome.card, nullptr);
}

TEST(ScanOutcomeTest, PutsTheRecognisedSidesTogether) {
    const auto side = [](const std::string& item) {
        return "<recoIndex lang=\"en\" objWidth=\"1024\" objHeight=\"600\">" + item + "</recoIndex>";
    };
    ScanOutcome outcome;
    outcome.response = std::make_shared<QVCardProcessingResponse>();
    outcome.response->setRawResultForFirstCard(
        side(R"(<item fldType="NAME" orient="0"><t w="90">Jordan Example</t></item>)"));
    outcome.response->setRawResultForSecondCard(side(R"(<item fldType="TITLE" orient="0"><t w="90">Head</t></item>)"));
    outcome.lookAtResponse();
    ASSERT_TRUE(outcome.hasFields());
    EXPECT_EQ(outcome.card->fields()->size(), 2U);
}

}  // namespace
