#include "Page/PageGate.h"

#include <gtest/gtest.h>

namespace qvhost {
namespace {

using Entry = PageGate::Entry;

const std::string kKey = "0123456789abcdef0123";

class PageGateRules : public testing::Test {
  protected:
    PageRequest request(const std::string& below = "api/cards") const {
        PageRequest request;
        request.method = "GET";
        request.target = mGate.key().folder() + below;
        request.host = "127.0.0.1:4711";
        request.cookie = "qvcardscan=" + kKey;
        return request;
    }

    PageGate mGate{PageKey(kKey), 4711, /*isForNetwork=*/false};
};

TEST_F(PageGateRules, TheKeyInTheAddressIsTheDoor) {
    PageRequest entering = request();
    entering.cookie.clear();
    entering.fetchSite = "cross-site";
    entering.target = "/?key=" + kKey;
    EXPECT_EQ(mGate.entryFor(entering), Entry::Door) << "a link may stand anywhere";
    for (const char* target : {"/", "/?key=", "/?key=0123456789abcdef0124", "/?kez=0123456789abcdef0123",
                               "/?key=0123456789abcdef01233", "//?key=0123456789abcdef0123"}) {
        entering.target = target;
        EXPECT_EQ(mGate.entryFor(entering), Entry::Refused) << target;
    }
    entering.target = "/?key=" + kKey;
    entering.method = "POST";
    EXPECT_EQ(mGate.entryFor(entering), Entry::Refused);
}

TEST_F(PageGateRules, OnlyTheCookieLeadsInside) {
    EXPECT_EQ(mGate.entryFor(request()), Entry::Inside);
    for (const char* cookie : {"", "qvcardscan=", "qvcardscan=wrong", "other=0123456789abcdef0123",
                               "qvcardscan=0123456789abcdef01234", "qvcardscan=0123456789abcdef012"}) {
        PageRequest other = request();
        other.cookie = cookie;
        EXPECT_EQ(mGate.entryFor(other), Entry::Refused) << cookie;
    }
    PageRequest among = request();
    among.cookie = "a=b; qvcardscan=old;  qvcardscan=" + kKey + "; c=d";
    EXPECT_EQ(mGate.entryFor(among), Entry::Inside);
}

TEST_F(PageGateRules, ThePagesOwnFilesNeedNoKeyButTheirFolder) {
    PageRequest file = request("main.js");
    file.cookie.clear();
    EXPECT_EQ(mGate.entryFor(file), Entry::Files);
    file.method = "POST";
    EXPECT_EQ(mGate.entryFor(file), Entry::Refused);
    file.method = "GET";
    file.target = "/main.js";
    EXPECT_EQ(mGate.entryFor(file), Entry::Refused);
    file.target = "/00000000000000000000000000000000/main.js";
    EXPECT_EQ(mGate.entryFor(file), Entry::Refused);
}

struct Header {
    const char* what;
    const char* host;
    const char* origin;
    const char* site;
    bool passes;
};

class PageGateHeaders : public PageGateRules, public testing::WithParamInterface<Header> {};

TEST_P(PageGateHeaders, AreLookedAt) {
    PageRequest asked = request();
    asked.host = GetParam().host;
    asked.origin = GetParam().origin;
    asked.fetchSite = GetParam().site;
    EXPECT_EQ(mGate.entryFor(asked) == Entry::Inside, GetParam().passes) << GetParam().what;
}

INSTANTIATE_TEST_SUITE_P(
    All, PageGateHeaders,
    testing::Values(Header{"number", "127.0.0.1:4711", "", "", true}, Header{"name", "localhost:4711", "", "", true},
                    Header{"number of version 6", "[::1]:4711", "", "", true}, Header{"none", "", "", "", false},
                    Header{"no port", "127.0.0.1", "", "", false},
                    Header{"other port", "127.0.0.1:4712", "", "", false},
                    Header{"longer port", "127.0.0.1:47110", "", "", false},
                    Header{"rebound name", "evil.example:4711", "", "", false},
                    Header{"our number as a part", "127.0.0.1.evil.example:4711", "", "", false},
                    Header{"our number as a user", "127.0.0.1@evil.example:4711", "", "", false},
                    Header{"another number", "192.0.2.1:4711", "", "", false},
                    Header{"own site", "127.0.0.1:4711", "http://127.0.0.1:4711", "same-origin", true},
                    Header{"own site by another name", "127.0.0.1:4711", "http://localhost:4711", "", false},
                    Header{"other site", "127.0.0.1:4711", "http://evil.example", "", false},
                    Header{"encrypted site", "127.0.0.1:4711", "https://127.0.0.1:4711", "", false},
                    Header{"no site", "127.0.0.1:4711", "null", "", false},
                    Header{"typed", "127.0.0.1:4711", "", "none", true},
                    Header{"other origin", "127.0.0.1:4711", "", "same-site", false},
                    Header{"cross", "127.0.0.1:4711", "", "cross-site", false}));

TEST(PageGateOnTheNetwork, TakesNumbersButNoNames) {
    const PageGate gate(PageKey(kKey), 80, /*isForNetwork=*/true);
    const auto entry = [&](const std::string& host) {
        PageRequest request;
        request.method = "GET";
        request.target = gate.key().folder();
        request.host = host;
        return gate.entryFor(request);
    };
    EXPECT_EQ(entry("192.0.2.1:80"), Entry::Files);
    EXPECT_EQ(entry("192.0.2.1"), Entry::Files) << "browsers leave the usual port out";
    EXPECT_EQ(entry("[2001:db8::1]"), Entry::Files);
    EXPECT_EQ(entry("evil.example"), Entry::Refused);
    EXPECT_EQ(entry("192.0.2.1:81"), Entry::Refused);
}

TEST(PageKey, IsNewEachTimeAndNeverInTheFolder) {
    const Result<PageKey> one = PageKey::choose(std::nullopt);
    const Result<PageKey> other = PageKey::choose(std::nullopt);
    ASSERT_TRUE(one && other);
    EXPECT_EQ(one->text().size(), 64U);
    EXPECT_NE(one->text(), other->text());
    EXPECT_EQ(one->folder().find(one->text().substr(0, 16)), std::string::npos);
    EXPECT_NE(one->cookie().find("; Path=" + one->folder() + "; HttpOnly; SameSite=Strict"), std::string::npos);
}

TEST(PageKey, ThatCouldBeGuessedIsRefused) {
    for (const char* key : {"short", "with a blank inside it", "semicolon;semicolon;"}) {
        ASSERT_EQ(::setenv(PageKey::kVariable, key, 1), 0);
        const Result<PageKey> chosen = PageKey::choose(std::nullopt);
        EXPECT_FALSE(chosen) << key;
        if (!chosen) {
            EXPECT_EQ(chosen.failure().message.find(key), std::string::npos);
        }
    }
    ::unsetenv(PageKey::kVariable);
}

TEST(PageRequest, FindsParametersAndResolvesPercentSigns) {
    PageRequest request;
    request.target = "/x?name=a%20%C3%A4%zz%4&b=1&name=c&flag";
    EXPECT_EQ(request.path(), "/x");
    EXPECT_EQ(request.parameter("name"), "a \xC3\xA4%zz%4");
    EXPECT_EQ(request.parameter("b"), "1");
    EXPECT_EQ(request.parameter("flag"), "");
    EXPECT_EQ(request.parameter("am"), "");
    request.target = "/x";
    EXPECT_EQ(request.parameter("b"), "");
}

}  // namespace
}  // namespace qvhost
