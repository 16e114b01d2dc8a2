#include "QVSocialSearch/QVCardDAVAddressBook.h"
#include "SocialSearch/CardDAVFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;
using testing::Pair;
using testing::SizeIs;
using testsupport::CardDAVHabits;
using testsupport::ScriptedRequest;
using testsupport::ScriptedServer;
using namespace davtest;
using namespace vcardtest;

const std::string kAda = "FN:Ada Example\r\nN:Example;Ada;;;\r\n";

class QVCardDAVAddressBookSavesTest : public CardDAVTest {
  protected:
    void expectSaved(const QVAddressBookSaveResult& result, QVAddressBookSaveOutcome outcome) {
        EXPECT_FALSE(result.error) << descriptionOf(result.error);
        EXPECT_EQ(result.outcome, outcome);
        EXPECT_TRUE(result.UID);
    }

    /// Another client writes the card once, just before the request of that method is answered.
    void changeBefore(const std::string& method, const std::string& name, const std::string& bytes) {
        mServer.setInterceptor([=, this, isDone = false](const ScriptedRequest& request) mutable {
            if (request.method == method && !std::exchange(isDone, true)) mServer.putCard(name, bytes);
            return std::optional<std::string>();
        });
    }
};

TEST_F(QVCardDAVAddressBookSavesTest, ANewCardIsPutUnderItsUIDOnTheConditionThatNothingIsThere) {
    const auto result = mBook.saveProfile(profileWithEmail("Ada Example", "ada@example.com"));
    expectSaved(result, QVAddressBookSaveOutcome::Created);
    EXPECT_THAT(*result.UID, MatchesRegex("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}"));
    EXPECT_THAT(mServer.cards(),
                ElementsAre(Pair(*result.UID + ".vcf", card(*result.UID, kAda + "EMAIL:ada@example.com\r\n"))));
    const auto puts = mServer.requests("PUT");
    ASSERT_THAT(puts, SizeIs(1));
    EXPECT_EQ(puts[0].target, "/dav/books/ada/contacts/" + *result.UID + ".vcf");
    EXPECT_EQ(puts[0].header("If-None-Match"), "*");
    EXPECT_EQ(puts[0].header("If-Match"), std::nullopt);
    EXPECT_EQ(puts[0].header("Content-Type"), "text/vcard; charset=utf-8");
    EXPECT_EQ(puts[0].header("Authorization"), kBasic);
}

TEST_F(QVCardDAVAddressBookSavesTest, AnUpdateKeepsTheCardsAddressAndEveryOtherByte) {
    mServer.putCard("some name.vcf", card("u-1", kAda + "X-ODD;;A=:  \r\n"));
    const auto result = mBook.saveProfile(recordWithEmail("u-1", "ada@example.com"));
    expectSaved(result, QVAddressBookSaveOutcome::Updated);
    EXPECT_EQ(result.UID, "u-1");
    EXPECT_THAT(mServer.cards(), ElementsAre(Pair("some name.vcf", card("u-1", kAda + "X-ODD;;A=:  \r\n"
                                                                                      "EMAIL:ada@example.com\r\n"))));
    const auto puts = mServer.requests("PUT");
    ASSERT_THAT(puts, SizeIs(1));
    EXPECT_EQ(puts[0].header("If-Match"), "\"v1\"");
    EXPECT_EQ(puts[0].header("If-None-Match"), std::nullopt);
}

TEST_F(QVCardDAVAddressBookSavesTest, ACardThatSaysItAllIsNotWritten) {
    mServer.putCard("u.vcf", card("u", kAda + "EMAIL:ada@example.com\r\n"));
    expectSaved(mBook.saveProfile(recordWithEmail("u", "ADA@example.com")), QVAddressBookSaveOutcome::Updated);
    EXPECT_THAT(mServer.requests("PUT"), IsEmpty());
}

TEST_F(QVCardDAVAddressBookSavesTest, AChangeBetweenReadingAndWritingIsMerged) {
    mServer.putCard("u.vcf", card("u", kAda));
    changeBefore("PUT", "u.vcf", card("u", kAda + "NOTE:theirs\r\n"));
    expectSaved(mBook.saveProfile(recordWithEmail("u", "ada@example.com")), QVAddressBookSaveOutcome::Updated);
    EXPECT_EQ(mServer.cards()["u.vcf"], card("u", kAda + "NOTE:theirs\r\nEMAIL:ada@example.com\r\n"));
    const auto puts = mServer.requests("PUT");
    ASSERT_THAT(puts, SizeIs(2));
    EXPECT_EQ(puts[0].header("If-Match"), "\"v1\"");
    EXPECT_EQ(puts[1].header("If-Match"), "\"v2\"");
}

TEST_F(QVCardDAVAddressBookSavesTest, ServersThatLoseTheConditionAreLookedAtOnceMore) {
    change({.keepsConditions = false});
    mServer.putCard("u.vcf", card("u", kAda));
    // The second look is the second GET.
    int gets = 0;
    mServer.setInterceptor([&](const ScriptedRequest& request) {
        if (request.method == "GET" && ++gets == 2) mServer.putCard("u.vcf", card("u", kAda + "NOTE:theirs\r\n"));
        return std::optional<std::string>();
    });
    expectSaved(mBook.saveProfile(recordWithEmail("u", "ada@example.com")), QVAddressBookSaveOutcome::Updated);
    EXPECT_EQ(mServer.cards()["u.vcf"], card("u", kAda + "NOTE:theirs\r\nEMAIL:ada@example.com\r\n"));
    EXPECT_THAT(mServer.requests("PUT"), SizeIs(1));
}

TEST_F(QVCardDAVAddressBookSavesTest, ServersWithoutETagsAreWrittenToAllTheSame) {
    change({.sendsETags = false});
    mServer.putCard("u.vcf", card("u", kAda));
    changeBefore("nothing", "", "");
    expectSaved(mBook.saveProfile(recordWithEmail("u", "ada@example.com")), QVAddressBookSaveOutcome::Updated);
    EXPECT_EQ(mServer.cards()["u.vcf"], card("u", kAda + "EMAIL:ada@example.com\r\n"));
    ASSERT_THAT(mServer.requests("PUT"), SizeIs(1));
    EXPECT_EQ(mServer.requests("PUT")[0].header("If-Match"), std::nullopt);
    expectSaved(mBook.saveProfile(profileWithEmail("Bea", "bea@example.com")), QVAddressBookSaveOutcome::Created);
    EXPECT_THAT(mServer.cards(), SizeIs(2));
}

TEST_F(QVCardDAVAddressBookSavesTest, AnAnswerWithoutETagIsFollowedByALook) {
    change({.sendsETagsForPuts = false, .sortsLines = true});
    const auto result = mBook.saveProfile(profileWithEmail("Ada Example", "ada@example.com"));
    expectSaved(result, QVAddressBookSaveOutcome::Created);
    EXPECT_THAT(mServer.requests("PUT"), SizeIs(1));
    EXPECT_THAT(mServer.requests("GET"), SizeIs(1));
    expectSaved(mBook.saveProfile(recordWithEmail(*result.UID, "b@example.com")), QVAddressBookSaveOutcome::Updated);
    EXPECT_THAT(mServer.requests("PUT"), SizeIs(2));
    EXPECT_THAT(mServer.cards(), SizeIs(1));
}

TEST_F(QVCardDAVAddressBookSavesTest, AServerThatKeepsOnlyAPartIsBelievedInTheEnd) {
    change({.sendsETagsForPuts = false});
    mServer.putCard("u.vcf", card("u", kAda));
    // Whatever is written, the server has its own idea of it.
    mServer.setInterceptor([&](const ScriptedRequest& request) -> std::optional<std::string> {
        if (request.method != "PUT") return std::nullopt;
        return ScriptedServer::answer(204, "");
    });
    expectSaved(mBook.saveProfile(recordWithEmail("u", "ada@example.com")), QVAddressBookSaveOutcome::Updated);
    EXPECT_THAT(mServer.requests("PUT"), SizeIs(3));
}

TEST_F(QVCardDAVAddressBookSavesTest, ALostAnswerMakesNoSecondCard) {
    change({.answersToLose = 1});
    const auto result = mBook.saveProfile(profileWithEmail("Ada Example", "ada@example.com"));
    expectSaved(result, QVAddressBookSaveOutcome::Created);
    EXPECT_THAT(mServer.cards(), ElementsAre(Pair(*result.UID + ".vcf", HasSubstr("EMAIL:ada@example.com\r\n"))));
    for (const ScriptedRequest& put : mServer.requests("PUT"))
        EXPECT_EQ(put.target, "/dav/books/ada/contacts/" + *result.UID + ".vcf");
}

TEST_F(QVCardDAVAddressBookSavesTest, ALostRequestIsSentAgain) {
    change({.putsToLose = 1});
    const auto result = mBook.saveProfile(profileWithEmail("Ada Example", "ada@example.com"));
    expectSaved(result, QVAddressBookSaveOutcome::Created);
    EXPECT_THAT(mServer.cards(), ElementsAre(Pair(*result.UID + ".vcf", HasSubstr("EMAIL:ada@example.com\r\n"))));
}

TEST_F(QVCardDAVAddressBookSavesTest, ALostAnswerToAnUpdateAddsNothingTwice) {
    mServer.putCard("u.vcf", card("u", kAda));
    change({.answersToLose = 2});
    expectSaved(mBook.saveProfile(recordWithEmail("u", "ada@example.com")), QVAddressBookSaveOutcome::Updated);
    EXPECT_THAT(mServer.cards(), ElementsAre(Pair("u.vcf", card("u", kAda + "EMAIL:ada@example.com\r\n"))));
}

TEST_F(QVCardDAVAddressBookSavesTest, AnswersThatAreAlwaysLostEnd) {
    change({.putsToLose = 1000});
    const auto result = mBook.saveProfile(profileWithEmail("Ada Example", "ada@example.com"));
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->code, QVAddressBookErrorUnwritable);
    EXPECT_THAT(descriptionOf(result.error), HasSubstr("it is not known whether the card was saved"));
    EXPECT_FALSE(result.UID);
    EXPECT_THAT(mServer.cards(), IsEmpty());
    EXPECT_LT(mServer.requests("PUT").size(), 10U);
}

TEST_F(QVCardDAVAddressBookSavesTest, AServerThatGoesForGoodAfterALostAnswerLeavesItOpen) {
    bool isGone = false;
    mServer.setInterceptor([&](const ScriptedRequest& request) -> std::optional<std::string> {
        if (request.method == "PUT") isGone = true;
        return isGone ? std::optional(ScriptedServer::answer(request.method == "PUT" ? 504 : 503, "")) : std::nullopt;
    });
    const auto result = mBook.saveProfile(profileWithEmail("Ada Example", "ada@example.com"));
    ASSERT_TRUE(result.error);
    EXPECT_THAT(descriptionOf(result.error), AllOf(HasSubstr("try again later"), HasSubstr("it is not known whether")));
    EXPECT_THAT(mServer.requests("PUT"), SizeIs(1));
}

TEST_F(QVCardDAVAddressBookSavesTest, WhatAGatewayLosesIsLookedUp) {
    mServer.setInterceptor([&, isDone = false](const ScriptedRequest& request) mutable -> std::optional<std::string> {
        if (request.method != "PUT" || std::exchange(isDone, true)) return std::nullopt;
        mServer.putCard(request.target.substr(request.target.rfind('/') + 1), request.body);
        return ScriptedServer::answer(504, "");
    });
    const auto result = mBook.saveProfile(profileWithEmail("Ada Example", "ada@example.com"));
    expectSaved(result, QVAddressBookSaveOutcome::Created);
    EXPECT_THAT(mServer.cards(), SizeIs(1));
    EXPECT_THAT(mServer.requests("PUT"), SizeIs(1));
}

TEST_F(QVCardDAVAddressBookSavesTest, ARecordThatIsGoneIsMadeAnewUnderItsUID) {
    mServer.putCard("other.vcf", card("other", kAda));
    const auto result = mBook.saveProfile(recordWithEmail("gone", "ada@example.com"));
    expectSaved(result, QVAddressBookSaveOutcome::Created);
    EXPECT_EQ(result.UID, "gone");
    EXPECT_THAT(mServer.cards(), ElementsAre(Pair("gone.vcf", card("gone", kAda + "EMAIL:ada@example.com\r\n")),
                                             Pair("other.vcf", card("other", kAda))));
}

TEST_F(QVCardDAVAddressBookSavesTest, ARecordThatGoesWhileItIsWrittenIsMadeAnew) {
    for (const int status : {404, 410, 412}) {
        mServer.putCard("u.vcf", card("u", kAda));
        mServer.setInterceptor([&, isDone = false](const ScriptedRequest& request) mutable {
            std::optional<std::string> answer;
            if (request.method != "PUT" || std::exchange(isDone, true)) return answer;
            mServer.removeCard("u.vcf");
            answer = ScriptedServer::answer(status, "");
            return answer;
        });
        const auto result = mBook.saveProfile(recordWithEmail("u", "ada@example.com"));
        expectSaved(result, QVAddressBookSaveOutcome::Created);
        EXPECT_EQ(result.UID, "u");
        EXPECT_THAT(mServer.cards(), ElementsAre(Pair("u.vcf", HasSubstr("EMAIL:ada@example.com"))));
        mServer.setInterceptor(nullptr);
        mServer.removeCard("u.vcf");
    }
}

TEST_F(QVCardDAVAddressBookSavesTest, ANameThatIsTakenByAnotherCardIsLeftToIt) {
    mServer.putCard("u.vcf", card("other", kAda));
    const auto result = mBook.saveProfile(recordWithEmail("u", "ada@example.com"));
    expectSaved(result, QVAddressBookSaveOutcome::Created);
    EXPECT_THAT(mServer.cards(), SizeIs(2));
    EXPECT_EQ(mServer.cards()["u.vcf"], card("other", kAda));
}

TEST_F(QVCardDAVAddressBookSavesTest, OthersWhoNeverStopGiveAConflict) {
    mServer.putCard("u.vcf", card("u", kAda));
    int changes = 0;
    mServer.setInterceptor([&](const ScriptedRequest& request) {
        if (request.method == "PUT")
            mServer.putCard("u.vcf", card("u", kAda + "NOTE:" + std::to_string(++changes) + "\r\n"));
        return std::optional<std::string>();
    });
    const auto result = mBook.saveProfile(recordWithEmail("u", "ada@example.com"));
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->code, QVAddressBookErrorConflict);
    EXPECT_EQ(changes, 12);
    EXPECT_EQ(mServer.cards()["u.vcf"], card("u", kAda + "NOTE:12\r\n"));
}

TEST_F(QVCardDAVAddressBookSavesTest, BrokenCardsAreLeftAlone) {
    const std::string broken = "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:u\r\nnonsense\r\nEND:VCARD\r\n";
    mServer.putCard("u.vcf", broken);
    const auto result = mBook.saveProfile(recordWithEmail("u", "ada@example.com"));
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->code, QVAddressBookErrorBrokenRecord);
    EXPECT_THAT(descriptionOf(result.error),
                AllOf(HasSubstr("u.vcf"), HasSubstr("line 4"), Not(HasSubstr("nonsense"))));
    EXPECT_EQ(mServer.cards()["u.vcf"], broken);
}

TEST_F(QVCardDAVAddressBookSavesTest, NothingToSaveIsRefused) {
    const auto result = mBook.saveProfile(QVSocialProfile());
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->code, QVAddressBookErrorNoProfile);
    EXPECT_THAT(mServer.requests("PUT"), IsEmpty());
}

TEST_F(QVCardDAVAddressBookSavesTest, UIDsCannotLeaveTheCollection) {
    const std::vector<std::string> UIDs = {"../evil", "/dav/evil",           ".hidden", "a/b", "a\\b", "Ä ö?#%", "..",
                                           "a\nb",    std::string(3000, 'x')};
    for (const std::string& UID : UIDs) {
        const auto result = mBook.saveProfile(recordWithEmail(UID, "ada@example.com"));
        expectSaved(result, QVAddressBookSaveOutcome::Created);
        expectSaved(mBook.saveProfile(recordWithEmail(UID, "b@example.com")), QVAddressBookSaveOutcome::Updated);
    }
    EXPECT_THAT(mServer.cards(), SizeIs(9));
    for (const ScriptedRequest& put : mServer.requests("PUT"))
        EXPECT_THAT(put.target, MatchesRegex("/dav/books/ada/contacts/[A-Za-z0-9%_~.-]+\\.vcf"));
}

struct StatusRow {
    int status;
    long code;
    const char* text;
};

class PutStatus : public QVCardDAVAddressBookSavesTest, public testing::WithParamInterface<StatusRow> {};

TEST_P(PutStatus, IsToldClearly) {
    mServer.setInterceptor([](const ScriptedRequest& request) {
        return request.method == "PUT" ? std::optional(ScriptedServer::answer(GetParam().status, "<b>server says</b>"))
                                       : std::nullopt;
    });
    const auto result = mBook.saveProfile(profileWithEmail("Ada", "ada@example.com"));
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->domain, kQVAddressBookErrorDomain);
    EXPECT_EQ(result.error->code, GetParam().code);
    EXPECT_THAT(descriptionOf(result.error),
                AllOf(HasSubstr(GetParam().text), HasSubstr("(status " + std::to_string(GetParam().status) + ")"),
                      HasSubstr(mServer.collection()), Not(HasSubstr("server says")), Not(HasSubstr(kPassword))));
    EXPECT_EQ(result.outcome, QVAddressBookSaveOutcome::None);
    EXPECT_FALSE(result.UID);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, PutStatus,
    testing::Values(StatusRow{400, QVAddressBookErrorUnwritable, "the server refuses the request"},
                    StatusRow{401, QVAddressBookErrorNotAllowed, "does not accept the user name and password"},
                    StatusRow{403, QVAddressBookErrorNotAllowed, "the server does not allow it"},
                    StatusRow{404, QVAddressBookErrorUnwritable, "there is nothing at this address"},
                    StatusRow{405, QVAddressBookErrorUnwritable, "there is no address book at this address"},
                    StatusRow{409, QVAddressBookErrorUnwritable, "the server refuses the card"},
                    StatusRow{413, QVAddressBookErrorUnwritable, "the card is too large for the server"},
                    StatusRow{415, QVAddressBookErrorUnwritable, "the server refuses the card"},
                    StatusRow{423, QVAddressBookErrorConflict, "the card is locked"},
                    StatusRow{429, QVAddressBookErrorUnwritable, "try again later"},
                    StatusRow{500, QVAddressBookErrorUnwritable, "the server failed"},
                    StatusRow{503, QVAddressBookErrorUnwritable, "try again later"},
                    StatusRow{507, QVAddressBookErrorUnwritable, "no room left"}),
    [](const auto& row) { return "Status" + std::to_string(row.param.status); });

TEST_F(QVCardDAVAddressBookSavesTest, SaversAtOnceLoseNothing) {
    constexpr int kSavers = 4;
    constexpr int kCount = 6;
    mServer.putCard("shared.vcf", card("shared", kAda));
    std::atomic<int> failures{0};
    std::vector<std::thread> threads;
    for (int saver = 0; saver < kSavers; ++saver) {
        threads.emplace_back([&, saver] {
            QVCardDAVAddressBook book(mServer.collection(), {.user = kUser, .password = kPassword, .token = {}});
            for (int i = 0; i < kCount; ++i) {
                const std::string name = "s" + std::to_string(saver) + "-" + std::to_string(i);
                failures += book.saveProfile(recordWithEmail("shared", name + "@example.com")).error ? 1 : 0;
                failures += book.saveProfile(recordWithEmail(name, name + "@example.com")).error ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(failures, 0);
    EXPECT_THAT(mServer.cards(), SizeIs(kSavers * kCount + 1));
    const auto shared = mBook.profileWithUID("shared", nullptr);
    ASSERT_TRUE(shared);
    EXPECT_THAT(shared->emailAddresses(), SizeIs(kSavers * kCount));
}

}  // namespace
