#include "QVPlatform/MD5.h"
#include "QVSocialSearch/QVCardDAVAddressBook.h"
#include "SocialSearch/CardDAVFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testsupport::ScriptedRequest;
using testsupport::ScriptedServer;
using namespace davtest;
using namespace vcardtest;

std::string MD5Of(const std::string& text) {
    return qv::lowerHexMD5(qv::Data(text.begin(), text.end()));
}

/// A parameter of a digest answer, without its quotes.
std::string parameterOf(const std::string& header, const std::string& name) {
    std::size_t at = header.find(" " + name + "=");
    if (at == std::string::npos) return "";
    at += name.size() + 2;
    if (header[at] != '"') return header.substr(at, header.find(',', at) - at);
    return header.substr(at + 1, header.find('"', at + 1) - at - 1);
}

/// A server that asks for Digest, by RFC 7616 with "auth" or by RFC 2069 without.
class DigestServer {
  public:
    explicit DigestServer(bool hasQuality) : mHasQuality(hasQuality) {}

    std::optional<std::string> operator()(const ScriptedRequest& request) {
        const std::string header = request.header("Authorization").value_or("");
        if (isRight(request, header)) return std::nullopt;
        return ScriptedServer::answer(401, "",
                                      "WWW-Authenticate: Basic realm=\"x\"\r\nWWW-Authenticate: Digest "
                                      "realm=\"cards, all\", nonce=\"" +
                                          mNonce + "\", opaque=\"o\"" +
                                          (mHasQuality ? ", qop=\"auth-int, auth\", algorithm=MD5" : "") + "\r\n");
    }

  private:
    bool isRight(const ScriptedRequest& request, const std::string& header) {
        if (!header.starts_with("Digest ") || parameterOf(header, "nonce") != mNonce) return false;
        const std::string secret = MD5Of(std::string(kUser) + ":cards, all:" + kPassword);
        const std::string count = parameterOf(header, "nc");
        const std::string middle = mHasQuality ? count + ":" + parameterOf(header, "cnonce") + ":auth:" : "";
        EXPECT_EQ(parameterOf(header, "uri"), request.target);
        EXPECT_EQ(parameterOf(header, "opaque"), "o");
        EXPECT_EQ(header.find(kPassword), std::string::npos);
        // A number that was used already would be a replay.
        EXPECT_TRUE(!mHasQuality || mCounts.insert(count).second) << count;
        return parameterOf(header, "response") ==
               MD5Of(secret + ":" + mNonce + ":" + middle + MD5Of(request.method + ":" + request.target));
    }

    bool mHasQuality;
    std::string mNonce = "n0nce==";
    std::set<std::string> mCounts;
};

class QVCardDAVAddressBookAccessTest : public CardDAVTest {
  protected:
    /// No other check than the interceptor's.
    void openTo(testsupport::FakeCardDAVServer::Interceptor interceptor) {
        mServer.setHabits({});
        mServer.setInterceptor(std::move(interceptor));
    }
    std::optional<qv::Error> mError;
};

TEST_F(QVCardDAVAddressBookAccessTest, DigestIsAnsweredWhereItIsAskedFor) {
    for (const bool hasQuality : {true, false}) {
        openTo(DigestServer(hasQuality));
        QVCardDAVAddressBook book(mServer.url(), {.user = kUser, .password = kPassword, .token = std::nullopt});
        const auto result = book.saveProfile(profileWithEmail("Ada", "ada@example.com"));
        EXPECT_FALSE(result.error) << descriptionOf(result.error);
        EXPECT_THAT(book.profiles(&mError), SizeIs(hasQuality ? 1 : 2));
        EXPECT_FALSE(mError) << descriptionOf(mError);
    }
    // A PUT is never sent without its card, and the card only once.
    for (const ScriptedRequest& put : mServer.requests("PUT"))
        EXPECT_THAT(put.body, HasSubstr("END:VCARD"));
    EXPECT_THAT(mServer.requests("PUT"), SizeIs(2));
}

TEST_F(QVCardDAVAddressBookAccessTest, AWrongPasswordForDigestEnds) {
    openTo(DigestServer(/*hasQuality=*/true));
    QVCardDAVAddressBook book(mServer.url(), {.user = kUser, .password = "wrong", .token = std::nullopt});
    EXPECT_THAT(book.profiles(&mError), IsEmpty());
    ASSERT_TRUE(mError);
    EXPECT_EQ(mError->code, QVAddressBookErrorNotAllowed);
    EXPECT_LT(mServer.requests().size(), 5U);
}

TEST_F(QVCardDAVAddressBookAccessTest, ANonceThatIsOldIsReplaced) {
    int requests = 0;
    openTo([&](const ScriptedRequest& request) -> std::optional<std::string> {
        const std::string nonce = "n" + std::to_string(++requests / 4);
        const std::string header = request.header("Authorization").value_or("");
        if (parameterOf(header, "nonce") == nonce) return std::nullopt;
        return ScriptedServer::answer(401, "",
                                      "WWW-Authenticate: digest stale=TRUE,realm=r , nonce=\"" + nonce + "\"\r\n");
    });
    QVCardDAVAddressBook book(mServer.collection(), {.user = kUser, .password = kPassword, .token = std::nullopt});
    for (int i = 0; i < 4; ++i)
        EXPECT_FALSE(book.saveProfile(profileWithEmail("Ada", "ada@example.com")).error);
    EXPECT_THAT(mServer.cards(), SizeIs(4));
}

TEST_F(QVCardDAVAddressBookAccessTest, ChallengesThatCannotBeAnsweredAreRefusals) {
    for (const std::string challenge :
         {"Digest", "Digest ", "Digest realm=\"r\"", "Digest realm=\"r\", nonce=\"n\", algorithm=SHA-512-256",
          "Digest realm=\"r\", nonce=\"n\", qop=\"auth-int\"", "Digest realm=\"r", "Digest ,,,,", "Negotiate", "NTLM",
          "Digest realm=\"r\\", "Basic realm=\"r\""}) {
        openTo([&](const ScriptedRequest&) {
            return std::optional(ScriptedServer::answer(401, "", "WWW-Authenticate: " + challenge + "\r\n"));
        });
        EXPECT_THAT(mBook.profiles(&mError), IsEmpty());
        ASSERT_TRUE(mError) << challenge;
        EXPECT_EQ(mError->code, QVAddressBookErrorNotAllowed) << challenge;
    }
}

TEST_F(QVCardDAVAddressBookAccessTest, ATokenGoesOutAsBearer) {
    change({.authorization = "Bearer t0ken"});
    QVCardDAVAddressBook book(mServer.url(), {.user = std::nullopt, .password = std::nullopt, .token = "t0ken"});
    EXPECT_FALSE(book.saveProfile(profileWithEmail("Ada", "ada@example.com")).error);
    EXPECT_FALSE(mLog.mentions("t0ken"));
    QVCardDAVAddressBook wrong(mServer.url(), {.user = std::nullopt, .password = std::nullopt, .token = "0ther"});
    EXPECT_THAT(wrong.profiles(&mError), IsEmpty());
    EXPECT_THAT(descriptionOf(mError), Not(HasSubstr("0ther")));
}

TEST_F(QVCardDAVAddressBookAccessTest, WithoutCredentialsNothingIsClaimed) {
    mServer.setHabits({});
    QVCardDAVAddressBook book(mServer.url(), {});
    EXPECT_FALSE(book.saveProfile(profileWithEmail("Ada", "ada@example.com")).error);
    for (const ScriptedRequest& request : mServer.requests())
        EXPECT_EQ(request.header("Authorization"), std::nullopt);
}

TEST_F(QVCardDAVAddressBookAccessTest, AnEmptyPasswordIsOne) {
    change({.authorization = "Basic YWRhOg=="});
    QVCardDAVAddressBook book(mServer.url(), {.user = kUser, .password = std::nullopt, .token = std::nullopt});
    EXPECT_TRUE(book.collectionAddress(&mError)) << descriptionOf(mError);
}

}  // namespace
