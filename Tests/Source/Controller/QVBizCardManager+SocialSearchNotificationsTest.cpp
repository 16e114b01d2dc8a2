#include "QVCardScan/QVSocialSearchResult.h"
#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "SocialSearchFixtures.h"
#include "Support/ResourceFolder.h"

#include <gmock/gmock.h>

namespace {

using socialsearch::profileWithLinks;
using socialsearch::scannedCard;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kFinished = "<INFO> sending out social search finished notification";
constexpr const char* kNotFound = "<INFO> sending out social search not found notification";
constexpr const char* kTimedOut = "<INFO> sending out social search timed out notification";

class SocialSearchNotificationTest : public socialsearch::SocialSearchFixture {
  protected:
    SocialSearchNotificationTest() {
        mManager->addSocialSearchRequestFromCardProcessingResponse(mResponse);
        mLog.clear();
    }

    std::shared_ptr<QVCardProcessingResponse> mResponse = scannedCard();
};

TEST_F(SocialSearchNotificationTest, TellsOfAFoundProfile) {
    const auto profile = profileWithLinks("https://example.com/in", "https://example.com/fb");
    profile->setFormattedName("Jordan B. Example");
    mSearch->answer(0, profile);
    ASSERT_EQ(mHeard.size(), 1U);
    EXPECT_EQ(mHeard.back().name, kQVSocialSearchFinishedNotification);
    EXPECT_THAT(heardKeys(), ElementsAre("QVSocialSearchNewQVMLContentKey", "QVSocialSearchRequestIDKey",
                                         "QVSocialSearchResultTypeKey", "QVSocialSearchSocialProfileKey"));
    EXPECT_EQ(heard<std::string>("QVSocialSearchRequestIDKey"), "note-1");
    EXPECT_EQ(heardType(), QVSocialSearchResultLinkedInAndFacebook);
    EXPECT_EQ(heard<std::shared_ptr<QVSocialProfile>>("QVSocialSearchSocialProfileKey"), profile);
    EXPECT_EQ(profile->emailAddresses().size(), 1U) << "the merge filled it";
    const auto content = heard<std::string>("QVSocialSearchNewQVMLContentKey");
    EXPECT_EQ(content, QVVeltoNoteGenerator().noteFromObject(mResponse->contact()));
    EXPECT_THAT(content, HasSubstr("Jordan B. Example"));
    EXPECT_EQ(mResponse->contact()->fullName(), "Jordan B. Example");
    EXPECT_EQ(mResponse->contact()->linkedInProfileURL(), "https://example.com/in");
}

TEST_F(SocialSearchNotificationTest, LogsAFoundProfileAfterPosting) {
    mSearch->answer(0, profileWithLinks(std::nullopt, std::nullopt));
    EXPECT_THAT(mLogWhenHeard.back(),
                ElementsAre("<INFO> Social Search Response: request note-1: found a profile of type 0"));
    EXPECT_THAT(mLog.messages(),
                ElementsAre("<INFO> Social Search Response: request note-1: found a profile of type 0", kFinished));
}

struct LinkRow {
    const char* name;
    QVString linkedIn;
    QVString facebook;
    QVSocialSearchResultType type;
};

void PrintTo(const LinkRow& row, std::ostream* stream) {
    *stream << row.name;
}

class ResultType : public socialsearch::SocialSearchFixture, public testing::WithParamInterface<LinkRow> {};

TEST_P(ResultType, GoesByThePresenceOfTheLinks) {
    mManager->addSocialSearchRequestFromCardProcessingResponse(scannedCard());
    mSearch->answer(0, profileWithLinks(GetParam().linkedIn, GetParam().facebook));
    EXPECT_EQ(heardType(), GetParam().type);
    EXPECT_EQ(mHeard.back().userInfo.count("QVSocialSearchSocialProfileKey"), 1U);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ResultType,
    testing::Values(LinkRow{"Neither", std::nullopt, std::nullopt, QVSocialSearchResultNotFound},
                    LinkRow{"LinkedIn", "https://example.com/in", std::nullopt, QVSocialSearchResultLinkedIn},
                    LinkRow{"Facebook", std::nullopt, "https://example.com/fb", QVSocialSearchResultFacebook},
                    LinkRow{"Both", "https://example.com/in", "https://example.com/fb",
                            QVSocialSearchResultLinkedInAndFacebook},
                    LinkRow{"EmptyLinkedInIsPresent", "", std::nullopt, QVSocialSearchResultLinkedIn},
                    LinkRow{"EmptyFacebookIsPresent", std::nullopt, "", QVSocialSearchResultFacebook}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(SocialSearchNotificationTest, ShipsANewAvatar) {
    const auto profile = profileWithLinks("https://example.com/in", std::nullopt);
    profile->setAddressBookAvatarData(testsupport::makePNG(testsupport::quarters(4, 4)));
    mSearch->answer(0, profile);
    EXPECT_THAT(heardKeys(), ElementsAre("QVSocialSearchNewImageResourcesKey", "QVSocialSearchNewQVMLContentKey",
                                         "QVSocialSearchRequestIDKey", "QVSocialSearchResultTypeKey",
                                         "QVSocialSearchSocialProfileKey"));
    const auto images = heard<QVImageArray>("QVSocialSearchNewImageResourcesKey");
    ASSERT_TRUE(mResponse->contact()->avatar());
    EXPECT_THAT(*images, ElementsAre(mResponse->contact()->avatar()));
    EXPECT_THAT(heard<std::string>("QVSocialSearchNewQVMLContentKey"),
                HasSubstr(QVVeltoNoteGenerator::lowerHexStringForDataHashFromNSImage(mResponse->contact()->avatar(),
                                                                                     "image/jpeg")));
}

TEST_F(SocialSearchNotificationTest, ShipsNoAvatarThatWasThereBefore) {
    mResponse->contact()->setAvatar(scans::picture());
    const auto profile = profileWithLinks("https://example.com/in", std::nullopt);
    profile->setAddressBookAvatarData(testsupport::makePNG(testsupport::quarters(4, 4)));
    mSearch->answer(0, profile);
    EXPECT_EQ(mHeard.back().userInfo.count("QVSocialSearchNewImageResourcesKey"), 0U);
}

TEST_F(SocialSearchNotificationTest, LeavesContentOutThatCannotBeMade) {
    const testsupport::ResourceFolder empty;
    mSearch->answer(0, profileWithLinks("https://example.com/in", std::nullopt));
    ASSERT_EQ(mHeard.size(), 1U);
    EXPECT_THAT(heardKeys(), ElementsAre("QVSocialSearchRequestIDKey", "QVSocialSearchResultTypeKey",
                                         "QVSocialSearchSocialProfileKey"));
}

TEST_F(SocialSearchNotificationTest, TellsThatNothingWasFound) {
    mSearch->answer(0, nullptr);
    ASSERT_EQ(mHeard.size(), 1U);
    EXPECT_THAT(heardKeys(), ElementsAre("QVSocialSearchBaseVeltoContactKey", "QVSocialSearchRequestIDKey",
                                         "QVSocialSearchResultTypeKey"));
    EXPECT_EQ(heard<std::string>("QVSocialSearchRequestIDKey"), "note-1");
    EXPECT_EQ(heardType(), QVSocialSearchResultNotFound);
    EXPECT_EQ(heard<std::shared_ptr<QVVeltoContact>>("QVSocialSearchBaseVeltoContactKey"), mResponse->contact());
    EXPECT_THAT(mLogWhenHeard.back(),
                ElementsAre("<INFO> Social Search Response: request note-1: nothing found", kNotFound));
    EXPECT_EQ(mLog.messages(), mLogWhenHeard.back()) << "nothing after posting";
}

TEST_F(SocialSearchNotificationTest, TellsThatTheTimeIsOver) {
    mMain.pass(std::chrono::seconds(4));
    ASSERT_EQ(mHeard.size(), 1U);
    EXPECT_THAT(heardKeys(), ElementsAre("QVSocialSearchBaseVeltoContactKey", "QVSocialSearchRequestIDKey",
                                         "QVSocialSearchResultTypeKey"));
    EXPECT_EQ(heard<std::string>("QVSocialSearchRequestIDKey"), "note-1");
    EXPECT_EQ(heardType(), QVSocialSearchResultTimedOut);
    EXPECT_EQ(heard<std::shared_ptr<QVVeltoContact>>("QVSocialSearchBaseVeltoContactKey"), mResponse->contact());
    EXPECT_THAT(mLogWhenHeard.back(), ElementsAre(kTimedOut));
    EXPECT_EQ(mLog.messages(), mLogWhenHeard.back());
}

TEST_F(SocialSearchNotificationTest, IsPostedForARecordThatIsGivenToIt) {
    const auto record = mManager->socialSearchRequestInfoWithID("note-1");
    mManager->sendSocialSearchNotFoundNotificationForRequestInfo(record);
    EXPECT_EQ(heardType(), QVSocialSearchResultNotFound);
    mManager->sendSocialSearchTimeoutNotificationForRequestInfo(record);
    EXPECT_EQ(heardType(), QVSocialSearchResultTimedOut);
    mManager->sendSocialSearchFinishedNotification(profileWithLinks(std::nullopt, "https://example.com/fb"), record);
    EXPECT_EQ(heardType(), QVSocialSearchResultFacebook);
    EXPECT_TRUE(mManager->socialSearchRequestInfoWithID("note-1")) << "the record stays where it is";
}

TEST_F(SocialSearchNotificationTest, DoesNotNeedARecordOrAProfile) {
    mManager->sendSocialSearchFinishedNotification(nullptr, nullptr);
    ASSERT_EQ(mHeard.size(), 1U);
    EXPECT_THAT(heardKeys(), ElementsAre("QVSocialSearchRequestIDKey", "QVSocialSearchResultTypeKey"));
    EXPECT_EQ(heardType(), QVSocialSearchResultNotFound);
    mManager->sendSocialSearchTimeoutNotificationForRequestInfo(nullptr);
    EXPECT_EQ(heard<std::shared_ptr<QVVeltoContact>>("QVSocialSearchBaseVeltoContactKey"), nullptr);
}

TEST_F(SocialSearchNotificationTest, TakesNothingFromARecordThatLacksItOrHoldsSomethingElse) {
    const auto empty = std::make_shared<qv::Dictionary>();
    const auto strange = std::make_shared<qv::Dictionary>(
        qv::Dictionary{{"QVSocialSearchRequestIDKey", 1}, {"QVSocialSearchBaseVeltoContactKey", std::string("a")}});
    for (const auto& record : {empty, strange}) {
        mManager->sendSocialSearchNotFoundNotificationForRequestInfo(record);
        EXPECT_EQ(heard<std::string>("QVSocialSearchRequestIDKey"), "");
        EXPECT_EQ(heard<std::shared_ptr<QVVeltoContact>>("QVSocialSearchBaseVeltoContactKey"), nullptr);
    }
}

TEST_F(SocialSearchNotificationTest, IsReadAsATypedResult) {
    const auto profile = profileWithLinks("https://example.com/in", std::nullopt);
    profile->setAddressBookAvatarData(testsupport::makePNG(testsupport::quarters(4, 4)));
    mSearch->answer(0, profile);
    const auto found = QVSocialSearchResult::fromNotification(mHeard.back());
    ASSERT_TRUE(found);
    EXPECT_EQ(found->requestID, "note-1");
    EXPECT_EQ(found->resultType, QVSocialSearchResultLinkedIn);
    EXPECT_EQ(found->socialProfile, profile);
    EXPECT_EQ(found->newQVMLContent, heard<std::string>("QVSocialSearchNewQVMLContentKey"));
    EXPECT_THAT(*found->newImageResources, ElementsAre(mResponse->contact()->avatar()));
    EXPECT_EQ(found->baseVeltoContact, nullptr);
}

}  // namespace
