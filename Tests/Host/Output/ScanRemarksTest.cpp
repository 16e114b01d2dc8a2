#include "Output/ScanRemarks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using qvhost::scanRemarks;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

qvhost::ScanOutcome outcomeWith(std::shared_ptr<QVBusinessCard> card) {
    qvhost::ScanOutcome outcome;
    outcome.response = std::make_shared<QVCardProcessingResponse>();
    outcome.card = std::move(card);
    return outcome;
}

std::shared_ptr<QVBusinessCard> cardIn(const QVString& language) {
    auto field = QVBusinessCardField::initWithType(QVBusinessCardFieldTypeTitle, 0, "title", "Engineer", {}, 90, 0);
    auto fields = std::make_shared<std::vector<std::shared_ptr<QVBusinessCardField>>>(1, field);
    return QVBusinessCard::initWithLanguage(language, fields, nullptr, nullptr);
}

TEST(ScanRemarks, SaysThatAnAnswerIsNoResult) {
    EXPECT_THAT(scanRemarks(outcomeWith(nullptr), std::nullopt, "the server at http://example.com/"),
                ElementsAre(AllOf(HasSubstr("the server at http://example.com/"), HasSubstr("Check its address"))));
}

TEST(ScanRemarks, SaysWhatToDoAboutAPictureWithoutText) {
    EXPECT_THAT(scanRemarks(outcomeWith(std::make_shared<QVBusinessCard>()), std::nullopt, "a server"),
                ElementsAre(HasSubstr("Take it again")));
}

TEST(ScanRemarks, SaysNothingOfAGoodScan) {
    EXPECT_THAT(scanRemarks(outcomeWith(cardIn("en")), std::nullopt, "a server"), IsEmpty());
}

TEST(ScanRemarks, SaysThatTheBackWasNotRead) {
    auto outcome = outcomeWith(cardIn("en"));
    outcome.pictureCount = 2;
    outcome.response->setRawResultForFirstCard("<recoIndex/>");
    EXPECT_THAT(scanRemarks(outcome, std::nullopt, "a server"), ElementsAre(HasSubstr("The back was not read")));
    outcome.response->setRawResultForSecondCard("<recoIndex/>");
    EXPECT_THAT(scanRemarks(outcome, std::nullopt, "a server"), IsEmpty());
    outcome.pictureCount = 1;
    outcome.response->setRawResultForSecondCard(std::nullopt);
    EXPECT_THAT(scanRemarks(outcome, std::nullopt, "a server"), IsEmpty()) << "there was no back";
}

struct LanguageRow {
    const char* name;
    const char* asked;
    QVString answered;
    bool isRemarkedOn;
};

class ScanRemarksOnLanguage : public testing::TestWithParam<LanguageRow> {};

TEST_P(ScanRemarksOnLanguage, SpeakOnlyOfAnotherOne) {
    const auto remarks = scanRemarks(outcomeWith(cardIn(GetParam().answered)), GetParam().asked, "a server");
    EXPECT_EQ(!remarks.empty(), GetParam().isRemarkedOn);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ScanRemarksOnLanguage,
    testing::Values(LanguageRow{"Same", "de", "de", false}, LanguageRow{"SameWithRegion", "de-AT", "DE", false},
                    LanguageRow{"Another", "ja", "en", true}, LanguageRow{"AnotherWithRegion", "pt-BR", "en", true},
                    LanguageRow{"ThreeLetters", "de", "deu", false}, LanguageRow{"Absent", "de", std::nullopt, false},
                    LanguageRow{"Empty", "de", "", false}),
    [](const auto& row) { return row.param.name; });

}  // namespace
