#include "QVPlatform/XMLParser.h"
#include "QVSocialSearch/QVCardDAVAddressBook.h"
#include "SocialSearch/CardDAVFixture.h"
#include "Support/UntrustedTLSServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testsupport::FakeCardDAVServer;
using testsupport::ScriptedRequest;
using testsupport::ScriptedServer;
using namespace davtest;
using namespace vcardtest;

/// A server that does as it likes, and another one where nothing must arrive.
class QVCardDAVAddressBookHostileTest : public CardDAVTest {
  protected:
    void TearDown() override {
        for (const ScriptedRequest& request : mOther.requests())
            ADD_FAILURE() << "arrived elsewhere: " << request.head;
        CardDAVTest::TearDown();
    }
    /// Answers every request of one method with this.
    void answer(const std::string& method, const std::string& bytes) {
        mServer.setInterceptor([=](const ScriptedRequest& request) {
            return request.method == method ? std::optional(bytes) : std::nullopt;
        });
    }
    static std::string cardAt(const std::string& href, const std::string& bytes) {
        return "<d:response><d:href>" + href +
               "</d:href><d:propstat><d:prop><d:getetag>\"1\"</d:getetag><c:address-data>" + bytes +
               "</c:address-data></d:prop><d:status>HTTP/1.1 200 OK</d:status></d:propstat></d:response>";
    }

    ScriptedServer mOther;
    std::optional<qv::Error> mError;
};

/// For whom only matters whether a text is XML.
class Silence : public qv::XMLParserDelegate {
    void didStartElement(const std::string&, const std::map<std::string, std::string>&) override {}
    void didEndElement(const std::string&) override {}
    void foundCharacters(std::string_view) override {}
    void parseErrorOccurred(const qv::Error&) override {}
};

TEST_F(QVCardDAVAddressBookHostileTest, RedirectsElsewhereAreRefused) {
    for (const int status : {301, 302, 307, 308}) {
        for (const std::string& target :
             {mOther.url("/dav/"), "http://localhost:" + std::to_string(mServer.port()) + "/dav/",
              "https://127.0.0.1:" + std::to_string(mServer.port()) + "/dav/", std::string("//127.0.0.1:1/dav/")}) {
            mServer.setInterceptor([=](const ScriptedRequest&) {
                return std::optional(ScriptedServer::answer(status, "", "Location: " + target + "\r\n"));
            });
            EXPECT_THAT(mBook.profiles(&mError), IsEmpty());
            EXPECT_THAT(descriptionOf(mError),
                        AllOf(HasSubstr("the server refers to http"), HasSubstr("where the password does not go"),
                              Not(HasSubstr(kPassword))));
            EXPECT_TRUE(mBook.saveProfile(profileWithEmail("Ada", "ada@example.com")).error);
        }
    }
}

TEST_F(QVCardDAVAddressBookHostileTest, RedirectsOfASavedCardElsewhereAreRefused) {
    answer("PUT", ScriptedServer::answer(307, "", "Location: " + mOther.url("/steal") + "\r\n"));
    const auto result = mBook.saveProfile(profileWithEmail("Ada", "ada@example.com"));
    EXPECT_THAT(descriptionOf(result.error), HasSubstr("where the password does not go"));
}

TEST_F(QVCardDAVAddressBookHostileTest, RedirectsInCirclesEnd) {
    answer("PROPFIND", ScriptedServer::answer(302, "", "Location: /dav/again\r\n"));
    EXPECT_THAT(mBook.profiles(&mError), IsEmpty());
    EXPECT_THAT(descriptionOf(mError), HasSubstr("redirects too often"));
    EXPECT_LT(mServer.requests().size(), 20U);
}

TEST_F(QVCardDAVAddressBookHostileTest, StationsElsewhereAreRefused) {
    QVCardDAVAddressBook book(mServer.url("/dav/"), {.user = kUser, .password = kPassword, .token = std::nullopt});
    for (const std::string& property :
         {std::string("d:current-user-principal"), std::string("c:addressbook-home-set")}) {
        answer("PROPFIND", FakeCardDAVServer::multistatus("<d:response><d:href>/dav/</d:href><d:propstat><d:prop><" +
                                                          property + "><d:href>" + mOther.url("/dav/") + "</d:href></" +
                                                          property + "></d:prop></d:propstat></d:response>"));
        EXPECT_EQ(book.collectionAddress(&mError), std::nullopt);
        EXPECT_THAT(descriptionOf(mError), HasSubstr("the server refers to " + mOther.url("")));
    }
}

TEST_F(QVCardDAVAddressBookHostileTest, CardsElsewhereAreNotFetched) {
    const std::string someone = card("x", "FN:X\r\n");
    std::string responses;
    for (const std::string& href :
         {mOther.url("/a.vcf"), std::string("//evil.example/a.vcf"), std::string("../bea/a.vcf"),
          std::string("/dav/books/ada/contacts/../../bea/b.vcf"), std::string("/dav/books/ada/contacts/%2e%2e/c.vcf"),
          std::string("/dav/books/ada/contacts/%2E%2E"), std::string("/dav/books/ada/contacts/sub/d.vcf"),
          std::string("/dav/books/ada/contacts/sub%2Fd.vcf"), std::string("/etc/passwd"), std::string("file:///e.vcf"),
          std::string("http://ada@127.0.0.1:1/f.vcf"), std::string(""), std::string("http://[::1"),
          std::string("javascript:alert(1)"), std::string("\\\\evil\\g.vcf")})
        responses += cardAt(href, someone);
    mServer.setInterceptor([&](const ScriptedRequest& request) -> std::optional<std::string> {
        if (request.target != "/dav/books/ada/contacts/" || request.header("Depth") != "1") return std::nullopt;
        return FakeCardDAVServer::multistatus(responses);
    });
    EXPECT_THAT(mBook.profiles(&mError), IsEmpty());
    EXPECT_THAT(descriptionOf(mError), HasSubstr("names a card that is not in there"));
    EXPECT_THAT(mServer.requests("GET"), IsEmpty());
    // Discovery, and one list: nothing was asked for.
    EXPECT_THAT(mServer.requests("REPORT"), IsEmpty());
    mBook.profilesWithEmailAddress("x@example.com", &mError);
    EXPECT_THAT(mServer.requests("GET"), IsEmpty());
}

struct AnswerRow {
    const char* name;
    std::function<std::string()> body;
};

class HostileAnswer : public QVCardDAVAddressBookHostileTest, public testing::WithParamInterface<AnswerRow> {};

TEST_P(HostileAnswer, CostsAnErrorOnly) {
    const std::string body = GetParam().body();
    // The way to the book is known before, so that every operation meets it.
    EXPECT_TRUE(mBook.collectionAddress(&mError));
    mServer.setInterceptor([&](const ScriptedRequest& request) -> std::optional<std::string> {
        if (request.method == "PUT" || request.method == "GET") return std::nullopt;
        return ScriptedServer::answer(207, body, "Content-Type: application/xml\r\n");
    });
    EXPECT_THAT(mBook.profiles(&mError), IsEmpty());
    EXPECT_TRUE(mError);
    EXPECT_THAT(descriptionOf(mError), Not(HasSubstr("secret contents")));
    EXPECT_THAT(mBook.profilesWithEmailAddress("ada@example.com", &mError), IsEmpty());
    EXPECT_FALSE(mBook.profileWithUID("u", &mError));
    const auto result = mBook.saveProfile(recordWithEmail("u", "ada@example.com"));
    EXPECT_TRUE(result.error || result.outcome == QVAddressBookSaveOutcome::Created);
}

std::string repeated(const std::string& text, std::size_t count) {
    std::string all;
    all.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

const std::string kHead = "<d:multistatus xmlns:d=\"DAV:\" xmlns:c=\"urn:ietf:params:xml:ns:carddav\">";

INSTANTIATE_TEST_SUITE_P(
    Rows, HostileAnswer,
    testing::Values(
        AnswerRow{"Nothing", [] { return std::string(); }}, AnswerRow{"NoXML", [] { return "secret contents"; }},
        AnswerRow{"OtherXML", [] { return "<html><body>secret contents</body></html>"; }},
        AnswerRow{"OtherNamespace", [] { return "<multistatus><response><href>/</href></response></multistatus>"; }},
        AnswerRow{"CutShort", [] { return kHead + "<d:response><d:href>/dav/books/ada/contacts/a.vcf</d:href>"; }},
        AnswerRow{"UnboundPrefix", [] { return "<d:multistatus><d:response/></d:multistatus>"; }},
        AnswerRow{"Deep",
                  [] { return kHead + repeated("<d:prop>", 9000) + repeated("</d:prop>", 9000) + "</d:multistatus>"; }},
        AnswerRow{"TooDeep", [] { return kHead + repeated("<d:prop>", 200000); }},
        AnswerRow{"ManyPrefixes",
                  [] {
                      std::string text = "<d:multistatus xmlns:d=\"DAV:\"";
                      for (int i = 0; i < 20000; ++i)
                          text += " xmlns:p" + std::to_string(i) + "=\"DAV:\"";
                      return text + "/>";
                  }},
        AnswerRow{"TooMany", [] { return kHead + repeated("<d:response/>", 60000) + "</d:multistatus>"; }},
        AnswerRow{"Elsewhere",
                  [] {
                      return kHead +
                             repeated("<d:response><d:href>http://evil.example/a.vcf</d:href></d:response>", 20000) +
                             "</d:multistatus>";
                  }},
        AnswerRow{"Entities",
                  [] {
                      std::string text = "<!DOCTYPE d [<!ENTITY e0 \"" + std::string(1000, 'x') + "\">";
                      for (int i = 1; i < 12; ++i)
                          text += "<!ENTITY e" + std::to_string(i) + " \"" +
                                  repeated("&e" + std::to_string(i - 1) + ";", 10) + "\">";
                      return text + "]>" + kHead + "<d:response><d:href>&e11;</d:href></d:response></d:multistatus>";
                  }},
        AnswerRow{"UTF16", [] { return std::string("\xFF\xFE<\0d\0", 6); }},
        AnswerRow{"TooLarge", [] { return kHead + std::string(std::size_t{33} << 20, ' ') + "</d:multistatus>"; }}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(QVCardDAVAddressBookHostileTest, WhateverIsLookedForTheQuestionIsXML) {
    for (const std::string text : {"a\x01z", "a\xEF\xBF\xBFz", "a\xFFz", "\xED\xA0\x80", "<&\">]]>"}) {
        mBook.profilesWithEmailAddress(text + "@example.com", &mError);
        const ScriptedRequest question = mServer.requests("REPORT").back();
        Silence silence;
        EXPECT_TRUE(qv::XMLParser::parse(question.body, silence)) << question.body;
    }
}

TEST_F(QVCardDAVAddressBookHostileTest, NothingExternalIsRead) {
    EXPECT_TRUE(mBook.collectionAddress(&mError));
    answer("PROPFIND",
           ScriptedServer::answer(207, "<!DOCTYPE d [<!ENTITY e SYSTEM \"" + mOther.url("/e") + "\">]>" + kHead +
                                           "<d:response><d:href>a&e;.vcf</d:href></d:response>"
                                           "</d:multistatus>"));
    EXPECT_THAT(mBook.profiles(&mError), IsEmpty());
}

TEST_F(QVCardDAVAddressBookHostileTest, MoreCardsThanWereAskedForAreNotLookedAt) {
    mServer.putCard("a.vcf", card("a", "FN:A\r\n"));
    answer("REPORT", FakeCardDAVServer::multistatus(repeated(cardAt("b.vcf", card("b", "FN:B\r\n")), 5)));
    EXPECT_THAT(mBook.profiles(&mError), IsEmpty());
    EXPECT_TRUE(mError);
}

TEST_F(QVCardDAVAddressBookHostileTest, ThousandsOfSameCardsAreOne) {
    const std::string one = cardAt("a.vcf", card("a", "FN:A\r\nEMAIL:a@example.com\r\n"));
    mServer.setInterceptor([&](const ScriptedRequest& request) -> std::optional<std::string> {
        if (request.method != "REPORT") return std::nullopt;
        return FakeCardDAVServer::multistatus(repeated(one, 5000));
    });
    EXPECT_THAT(mBook.profilesWithEmailAddress("a@example.com", &mError), SizeIs(1));
}

TEST_F(QVCardDAVAddressBookHostileTest, LargeAnswersAreAskedForInSmallerParts) {
    // Each alone fits into an answer, all of them do not.
    for (int i = 0; i < 6; ++i) {
        const std::string UID = "p" + std::to_string(i);
        mServer.putCard(UID + ".vcf", card(UID, "FN:P\r\nNOTE:" + std::string(std::size_t{6} << 20, 'n') + "\r\n"));
    }
    EXPECT_THAT(mBook.profiles(&mError), SizeIs(6));
    EXPECT_FALSE(mError) << descriptionOf(mError);
    EXPECT_GT(mServer.requests("REPORT").size(), 2U);
}

TEST_F(QVCardDAVAddressBookHostileTest, ACardThatIsTooLargeIsReported) {
    mServer.putCard("u.vcf", card("u", "FN:P\r\nNOTE:" + std::string(std::size_t{17} << 20, 'n') + "\r\n"));
    const auto result = mBook.saveProfile(recordWithEmail("u", "ada@example.com"));
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->code, QVAddressBookErrorBrokenRecord);
    EXPECT_THAT(descriptionOf(result.error), HasSubstr("it is too large"));
    EXPECT_THAT(mBook.profiles(&mError), IsEmpty());
    EXPECT_EQ(mError->code, QVAddressBookErrorBrokenRecord);
}

TEST_F(QVCardDAVAddressBookHostileTest, AServerThatDoesNotEndIsLeft) {
    ScriptedServer silent;
    silent.handle(
        [](testsupport::ScriptedConnection& connection, const ScriptedRequest&) { connection.waitUntilClosed(); });
    QVCardDAVAddressBook book(silent.url("/dav/"), {.user = kUser, .password = kPassword, .token = std::nullopt});
    book.setTotalSeconds(1);
    EXPECT_THAT(book.profiles(&mError), IsEmpty());
    EXPECT_EQ(mError->code, QVAddressBookErrorUnreadable);
}

TEST_F(QVCardDAVAddressBookHostileTest, CredentialsNeedAServerWithACertificate) {
    const testsupport::UntrustedTLSServer server;
    QVCardDAVAddressBook book(server.url(), {.user = kUser, .password = kPassword, .token = std::nullopt});
    EXPECT_THAT(book.profiles(&mError), IsEmpty());
    EXPECT_TRUE(mError);
    EXPECT_EQ(server.received(), "");
}

TEST_F(QVCardDAVAddressBookHostileTest, UserNamesWithColonsAreRefused) {
    QVCardDAVAddressBook book(mServer.url(), {.user = "a:b", .password = kPassword, .token = std::nullopt});
    EXPECT_THAT(book.profiles(&mError), IsEmpty());
    EXPECT_EQ(mError->code, QVAddressBookErrorNotAllowed);
    EXPECT_THAT(mServer.requests(), IsEmpty());
}

TEST_F(QVCardDAVAddressBookHostileTest, CredentialsThatBreakOutOfTheirLineAreNotSent) {
    QVCardDAVAddressBook book(mServer.url(), {.user = {}, .password = {}, .token = "abc\r\nX-Evil: 1"});
    EXPECT_THAT(book.profiles(&mError), IsEmpty());
    EXPECT_THAT(descriptionOf(mError), Not(HasSubstr("abc")));
    EXPECT_THAT(mServer.requests(), IsEmpty());
}

}  // namespace
