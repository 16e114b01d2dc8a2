#include "SocialSearch/Services/GravatarFixture.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;

namespace {

using testing::ElementsAre;
using testsupport::ScriptedServer;

/// How long the service is left alone after its first answer.
struct QuotaRow {
    const char* name;
    int status;
    /// Header lines; "NOW+n" stands for the moment n seconds from now.
    std::string headers;
    std::chrono::seconds pause;
};

class RequestQuotaTest : public social::GravatarFixture, public testing::WithParamInterface<QuotaRow> {
  protected:
    std::string headers() const {
        std::string lines = GetParam().headers;
        for (std::size_t at = lines.find("NOW"); at != std::string::npos; at = lines.find("NOW")) {
            std::size_t length = 0;
            const long count = std::stol(lines.substr(at + 3), &length);
            lines.replace(at, 3 + length, inSeconds(count));
        }
        return lines;
    }
};

TEST_P(RequestQuotaTest, LeavesTheServiceAloneForSoLong) {
    mService.respond(ScriptedServer::answer(GetParam().status, "{}", headers()));
    mService.respond(ScriptedServer::answer(200, R"({"company": "C"})"));
    const auto service = provider();
    EXPECT_EQ(find(service, "first@example.com"), nullptr);
    if (GetParam().pause > 0s) {
        EXPECT_TRUE(mLog.contains("<WARNING> Gravatar is not asked again for " +
                                  std::to_string(GetParam().pause.count()) + " seconds"));
        pass(GetParam().pause - 1s);
        EXPECT_EQ(find(service), nullptr);
        EXPECT_EQ(asked(), 1U);
        pass(1s);
    }
    EXPECT_NE(find(service), nullptr);
    EXPECT_EQ(asked(), 2U);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, RequestQuotaTest,
    testing::Values(
        QuotaRow{"ResetAsAMoment", 429,
                 "X-RateLimit-Limit: 100\r\nX-RateLimit-Remaining: 0\r\nX-RateLimit-Reset: NOW+1800\r\n", 1800s},
        QuotaRow{"ResetAsSeconds", 429, "X-RateLimit-Reset: 90\r\n", 90s},
        QuotaRow{"RetryAfter", 429, "Retry-After: 120\r\n", 120s},
        QuotaRow{"TheLaterOfBoth", 429, "Retry-After: 10\r\nX-RateLimit-Reset: NOW+600\r\n", 600s},
        QuotaRow{"TheLaterOfBothTheOtherWay", 429, "Retry-After: 600\r\nX-RateLimit-Reset: NOW+10\r\n", 600s},
        QuotaRow{"RetryAfterADate", 429, "Retry-After: Fri, 15 Jan 2027 08:05:00 GMT\r\n", 300s},
        QuotaRow{"NoWordOfTime", 429, "", 60s}, QuotaRow{"ResetInThePast", 429, "X-RateLimit-Reset: NOW-5\r\n", 60s},
        QuotaRow{"RetryAtOnce", 429, "Retry-After: 0\r\n", 60s},
        QuotaRow{"NotANumber", 429, "Retry-After: soon\r\nX-RateLimit-Reset: later\r\n", 60s},
        QuotaRow{"Negative", 429, "Retry-After: -5\r\nX-RateLimit-Reset: -1\r\n", 60s},
        QuotaRow{"BeyondAllMeasure", 429, "X-RateLimit-Reset: 99999999999999999999999\r\n", 86400s},
        QuotaRow{"NextYear", 429, "Retry-After: 31536000\r\n", 86400s},
        QuotaRow{"DateFarAway", 429, "Retry-After: Fri, 31 Dec 9999 23:59:59 GMT\r\n", 86400s},
        QuotaRow{"LastRequest", 404, "X-RateLimit-Remaining: 0\r\nX-RateLimit-Reset: NOW+30\r\n", 30s},
        QuotaRow{"LastRequestAfterAnError", 500, "X-RateLimit-Remaining: 0\r\nX-RateLimit-Reset: NOW+30\r\n", 30s},
        QuotaRow{"LastRequestAndNoWordOfTime", 404, "X-RateLimit-Remaining: 0\r\n", 0s},
        QuotaRow{"SomeAreLeft", 404, "X-RateLimit-Remaining: 1\r\nX-RateLimit-Reset: NOW+30\r\n", 0s},
        QuotaRow{"Unavailable", 503, "Retry-After: 45\r\n", 45s}, QuotaRow{"UnavailableWithoutATime", 503, "", 0s},
        QuotaRow{"ServerError", 500, "", 0s}),
    [](const auto& row) { return row.param.name; });

class RequestQuotaCourseTest : public social::GravatarFixture {};

TEST_F(RequestQuotaCourseTest, KeepsToWhatIsKnownMeanwhile) {
    mService.respond(ScriptedServer::answer(200, R"({"company": "C"})"));
    mService.respond(ScriptedServer::answer(429, "", "Retry-After: 100\r\n"));
    const auto service = provider();
    find(service, "known@example.com");
    find(service, "other@example.com");
    EXPECT_NE(find(service, "known@example.com"), nullptr);
    EXPECT_EQ(asked(), 2U);
}

TEST_F(RequestQuotaCourseTest, RemembersNobodyAsAMissBecauseOfAPause) {
    mService.respond(ScriptedServer::answer(429, "", "Retry-After: 100\r\n"));
    mService.respond(ScriptedServer::answer(200, R"({"company": "C"})"));
    const auto service = provider();
    EXPECT_EQ(find(service), nullptr);
    EXPECT_EQ(find(service), nullptr);
    pass(100s);
    EXPECT_NE(find(service), nullptr);
}

TEST_F(RequestQuotaCourseTest, KeepsTheLastHit) {
    mService.respond(ScriptedServer::answer(
        200, R"({"company": "C"})", "X-RateLimit-Remaining: 0\r\nX-RateLimit-Reset: " + inSeconds(50) + "\r\n"));
    const auto service = provider();
    EXPECT_NE(find(service), nullptr);
    EXPECT_EQ(find(service, "other@example.com"), nullptr);
    EXPECT_EQ(asked(), 1U);
    EXPECT_THAT(mLog.messages(), ElementsAre("<WARNING> Gravatar is not asked again for 50 seconds"));
}

TEST_F(RequestQuotaCourseTest, EndsWhenTheClockIsSetBack) {
    mService.respond(ScriptedServer::answer(429, "", "Retry-After: 100\r\n"));
    const auto service = provider();
    find(service);
    pass(-1h);
    find(service);
    EXPECT_EQ(asked(), 2U);
}

}  // namespace
