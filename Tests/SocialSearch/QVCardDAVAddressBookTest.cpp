#include "QVSocialSearch/QVCardDAVAddressBook.h"
#include "SocialSearch/CardDAVFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testsupport::FakeCardDAVServer;
using testsupport::ScriptedRequest;
using testsupport::ScriptedServer;
using namespace davtest;
using namespace vcardtest;

class QVCardDAVAddressBookTest : public CardDAVTest {
  protected:
    void putPerson(const std::string& UID, const std::string& lines = "") {
        mServer.putCard(UID + ".vcf", card(UID, "FN:Person " + UID + "\r\nN:" + UID + ";Person;;;\r\nEMAIL;TYPE=WORK:" +
                                                    UID + "@example.com\r\n" + lines));
    }
    std::vector<std::string> UIDsWithEmail(const std::string& address) {
        std::vector<std::string> UIDs;
        for (const auto& profile : mBook.profilesWithEmailAddress(address, &mError))
            UIDs.push_back(profile->addressBookUID().value_or(""));
        EXPECT_FALSE(mError) << descriptionOf(mError);
        return UIDs;
    }

    std::optional<qv::Error> mError;
};

TEST_F(QVCardDAVAddressBookTest, FindsPeopleByAnyAddressInAnyCase) {
    putPerson("a", "EMAIL;TYPE=HOME:Other.A@Example.ORG\r\n");
    putPerson("b");
    EXPECT_THAT(UIDsWithEmail("A@EXAMPLE.com"), ElementsAre("a"));
    EXPECT_THAT(UIDsWithEmail(" other.a@example.org "), ElementsAre("a"));
    EXPECT_THAT(UIDsWithEmail("nobody@example.com"), IsEmpty());
    EXPECT_THAT(UIDsWithEmail(""), IsEmpty());
    EXPECT_THAT(UIDsWithEmail("  "), IsEmpty());
}

TEST_F(QVCardDAVAddressBookTest, BelievesOnlyWhatTheCardsSay) {
    putPerson("a");
    putPerson("la");
    // The server's search finds both: one contains the other.
    EXPECT_THAT(UIDsWithEmail("a@example.com"), ElementsAre("a"));
}

TEST_F(QVCardDAVAddressBookTest, AProfileFromTheServerStandsForItsRecord) {
    putPerson("a", "TITLE:Director\r\nORG:Example Ltd.;Sales\r\nTEL;TYPE=CELL:+1 202 555 0100\r\n");
    const auto profile = mBook.profileWithUID("a", &mError);
    ASSERT_TRUE(profile) << descriptionOf(mError);
    EXPECT_EQ(profile->profileType(), QVSocialProfileSourceAddressBook);
    EXPECT_EQ(profile->addressBookUID(), "a");
    EXPECT_EQ(profile->formattedName(), "Person a");
    EXPECT_EQ(profile->jobTitle(), "Director");
    EXPECT_EQ(profile->company(), "Example Ltd.");
    EXPECT_THAT(profile->phoneNumbers(), SizeIs(1));
}

TEST_F(QVCardDAVAddressBookTest, UIDsAreFoundUnderAnyName) {
    mServer.putCard("some name.vcf", card("a b", "FN:A\r\n"));
    mServer.putCard("no uid.vcf", "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:B\r\nEND:VCARD\r\n");
    EXPECT_TRUE(mBook.profileWithUID("a b", &mError));
    const auto without = mBook.profileWithUID("no uid", &mError);
    ASSERT_TRUE(without);
    EXPECT_EQ(without->addressBookUID(), "no uid");
    EXPECT_FALSE(mBook.profileWithUID("missing", &mError));
    EXPECT_FALSE(mError) << descriptionOf(mError);
}

TEST_F(QVCardDAVAddressBookTest, ServersThatCannotSearchAreReadWhole) {
    for (const bool isSilent : {false, true}) {
        change({.searches = isSilent, .findsNothing = true});
        putPerson("a");
        putPerson("b");
        EXPECT_THAT(UIDsWithEmail("B@example.com"), ElementsAre("b"));
        EXPECT_THAT(UIDsWithEmail("nobody@example.com"), IsEmpty());
        mServer.putCard("other.vcf", card("u", "FN:U\r\n"));
        EXPECT_TRUE(mBook.profileWithUID("u", &mError));
        EXPECT_FALSE(mError) << descriptionOf(mError);
    }
}

TEST_F(QVCardDAVAddressBookTest, AServerThatCanSearchIsBelievedFromThenOn) {
    putPerson("a");
    UIDsWithEmail("nobody@example.com");
    const std::size_t before = mServer.requests().size();
    UIDsWithEmail("nobody2@example.com");
    EXPECT_EQ(mServer.requests().size(), before + 1);
}

TEST_F(QVCardDAVAddressBookTest, AllProfilesComeInParts) {
    constexpr int kCount = 120;
    for (int i = 0; i < kCount; ++i)
        putPerson("p" + std::to_string(i));
    EXPECT_THAT(mBook.profiles(&mError), SizeIs(kCount));
    EXPECT_FALSE(mError) << descriptionOf(mError);
    EXPECT_THAT(mServer.requests("REPORT"), SizeIs(3));
}

TEST_F(QVCardDAVAddressBookTest, ServersThatFetchOnlySinglyAreReadSingly) {
    change({.fetchesMany = false});
    putPerson("a");
    putPerson("b");
    EXPECT_THAT(mBook.profiles(&mError), SizeIs(2));
    EXPECT_FALSE(mError) << descriptionOf(mError);
    EXPECT_THAT(mServer.requests("GET"), SizeIs(2));
}

TEST_F(QVCardDAVAddressBookTest, CardsThatGoMeanwhileAreLeftOut) {
    putPerson("a");
    putPerson("b");
    mServer.setInterceptor([&](const ScriptedRequest& request) {
        if (request.method == "REPORT") mServer.removeCard("a.vcf");
        return std::optional<std::string>();
    });
    EXPECT_THAT(mBook.profiles(&mError), SizeIs(1));
    EXPECT_FALSE(mError) << descriptionOf(mError);
}

TEST_F(QVCardDAVAddressBookTest, BrokenCardsAreReportedAndTheOthersRead) {
    putPerson("a");
    mServer.putCard("broken.vcf", "BEGIN:VCARD\r\nVERSION:3.0\r\nnonsense\r\nEND:VCARD\r\n");
    EXPECT_THAT(mBook.profiles(&mError), SizeIs(1));
    ASSERT_TRUE(mError);
    EXPECT_EQ(mError->code, QVAddressBookErrorBrokenRecord);
    EXPECT_THAT(descriptionOf(mError), AllOf(HasSubstr("broken.vcf"), Not(HasSubstr("nonsense"))));
}

TEST_F(QVCardDAVAddressBookTest, OtherThingsInTheCollectionAreNoCards) {
    putPerson("a");
    mServer.setInterceptor([&](const ScriptedRequest& request) -> std::optional<std::string> {
        if (request.method != "PROPFIND" || request.header("Depth") != "1") return std::nullopt;
        return FakeCardDAVServer::multistatus(
            "<d:response><d:href>/dav/books/ada/contacts/</d:href><d:propstat><d:prop><d:resourcetype><d:collection/>"
            "</d:resourcetype></d:prop><d:status>HTTP/1.1 200 OK</d:status></d:propstat></d:response>"
            "<d:response><d:href>a.vcf</d:href><d:propstat><d:prop><d:resourcetype/></d:prop></d:propstat></d:response>"
            "<d:response><d:href>/dav/books/ada/contacts/sub/</d:href><d:propstat><d:prop><d:resourcetype>"
            "<d:collection/></d:resourcetype></d:prop></d:propstat></d:response>"
            "<d:response><d:href>/dav/books/ada/contacts/x.txt</d:href><d:propstat><d:prop><d:getcontenttype>text/plain"
            "</d:getcontenttype></d:prop></d:propstat></d:response>");
    });
    EXPECT_THAT(mBook.profiles(&mError), SizeIs(1));
    EXPECT_FALSE(mError) << descriptionOf(mError);
}

TEST_F(QVCardDAVAddressBookTest, WorksThroughTheInterface) {
    QVAddressBook& book = mBook;
    const QVString UID = book.saveProfile(profileWithEmail("山田太郎", "taro@example.com")).UID;
    const auto found = book.profilesWithEmailAddress("TARO@example.com", nullptr);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found.front()->addressBookUID(), UID);
    EXPECT_EQ(found.front()->formattedName(), "山田太郎");
    EXPECT_THAT(book.profiles(nullptr), SizeIs(1));
    EXPECT_TRUE(book.profileWithUID(UID.value_or(""), nullptr));
}

struct StatusRow {
    int status;
    long code;
    const char* text;
};

class ReadStatus : public QVCardDAVAddressBookTest, public testing::WithParamInterface<StatusRow> {};

TEST_P(ReadStatus, IsToldClearly) {
    mServer.setInterceptor(
        [](const ScriptedRequest&) { return std::optional(ScriptedServer::answer(GetParam().status, "<b>says</b>")); });
    for (int i = 0; i < 4; ++i) {
        mError.reset();
        if (i == 0) mBook.profiles(&mError);
        if (i == 1) mBook.profilesWithEmailAddress("a@example.com", &mError);
        if (i == 2) mBook.profileWithUID("a", &mError);
        if (i == 3) mError = mBook.saveProfile(profileWithEmail("Ada", "a@example.com")).error;
        ASSERT_TRUE(mError) << i;
        EXPECT_EQ(mError->code, GetParam().code);
        EXPECT_THAT(descriptionOf(mError), AllOf(HasSubstr(GetParam().text), Not(HasSubstr("says")),
                                                 Not(HasSubstr(kPassword)), HasSubstr(mServer.url(""))));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ReadStatus,
    testing::Values(StatusRow{200, QVAddressBookErrorUnreadable, "this is no answer of a CardDAV server"},
                    StatusRow{204, QVAddressBookErrorUnreadable, "this is no answer of a CardDAV server"},
                    StatusRow{207, QVAddressBookErrorUnreadable, "this is no answer of a CardDAV server"},
                    StatusRow{301, QVAddressBookErrorUnreadable, "this is no answer of a CardDAV server"},
                    StatusRow{401, QVAddressBookErrorNotAllowed, "does not accept the user name and password"},
                    StatusRow{403, QVAddressBookErrorNotAllowed, "the server does not allow it"},
                    StatusRow{404, QVAddressBookErrorUnreadable, "there is nothing at this address"},
                    StatusRow{405, QVAddressBookErrorUnreadable, "there is no address book at this address"},
                    StatusRow{410, QVAddressBookErrorUnreadable, "there is nothing at this address any more"},
                    StatusRow{429, QVAddressBookErrorUnreadable, "try again later"},
                    StatusRow{500, QVAddressBookErrorUnreadable, "the server failed"},
                    StatusRow{502, QVAddressBookErrorUnreadable, "cannot be reached by the one in front of it"},
                    StatusRow{503, QVAddressBookErrorUnreadable, "try again later"}),
    [](const auto& row) { return "Status" + std::to_string(row.param.status); });

TEST_F(QVCardDAVAddressBookTest, ACollectionThatGoesIsToldAndLookedForAgain) {
    putPerson("a");
    EXPECT_THAT(mBook.profiles(&mError), SizeIs(1));
    mServer.setInterceptor([](const ScriptedRequest&) { return std::optional(ScriptedServer::answer(404, "")); });
    EXPECT_THAT(mBook.profiles(&mError), IsEmpty());
    EXPECT_THAT(descriptionOf(mError), HasSubstr("there is nothing at this address"));
    mServer.setInterceptor(nullptr);
    EXPECT_THAT(mBook.profiles(&mError), SizeIs(1));
    EXPECT_FALSE(mError);
}

TEST_F(QVCardDAVAddressBookTest, AServerThatIsNotThereIsTold) {
    QVCardDAVAddressBook book("http://127.0.0.1:1/", {});
    EXPECT_THAT(book.profiles(&mError), IsEmpty());
    ASSERT_TRUE(mError);
    EXPECT_EQ(mError->code, QVAddressBookErrorUnreadable);
    EXPECT_THAT(descriptionOf(mError), HasSubstr("127.0.0.1"));
    EXPECT_THAT(book.profiles(nullptr), IsEmpty());
}

}  // namespace
