#include "QVPlatform/HTTPClient.h"
#include "Support/HTTPRequests.h"
#include "Support/ScriptedServer.h"

#include <gtest/gtest.h>

#include <string>

using namespace std::string_literals;
using namespace testsupport;

namespace {

struct HeaderRow {
    const char* name;
    std::string header;
    std::string value;
};

class BadHeader : public testing::TestWithParam<HeaderRow> {};

TEST_P(BadHeader, IsRefusedBeforeAnythingIsSent) {
    ScriptedServer server;
    auto request = requestTo(server.url(), "POST");
    request.headers = {{"Good", "good"}, {GetParam().header, GetParam().value}};
    const auto response = send(request);
    EXPECT_EQ(errorCodeOf(response), codeOf(qv::HTTPErrorCode::InvalidHeader));
    EXPECT_EQ(response.error->domain, qv::kURLErrorDomain);
    EXPECT_EQ(response.status, 0);
    EXPECT_EQ(response.body, std::nullopt);
    EXPECT_EQ(errorTextOf(response), "The request has a method or header that HTTP does not allow");
    EXPECT_EQ(server.connectionCount(), 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BadHeader,
    testing::Values(HeaderRow{"LineFeedInValue", "auth", "token\nX: y"},
                    HeaderRow{"ReturnInValue", "auth", "token\rX: y"},
                    HeaderRow{"LineEndInValue", "auth", "token\r\nX: y"},
                    HeaderRow{"LineEndAtEnd", "auth", "token\r\n"}, HeaderRow{"NulInValue", "auth", "to\0ken"s},
                    HeaderRow{"LineEndInName", "auth\r\nX", "y"}, HeaderRow{"NulInName", "au\0th"s, "y"},
                    HeaderRow{"ColonInName", "auth: a", "y"}, HeaderRow{"SemicolonInName", "auth;", ""},
                    HeaderRow{"SpaceInName", "au th", "y"}, HeaderRow{"NonASCIIName", "aüth", "y"},
                    HeaderRow{"EmptyName", "", "y"}),
    [](const auto& row) { return row.param.name; });

class BadMethod : public testing::TestWithParam<std::string> {};

TEST_P(BadMethod, IsRefusedBeforeAnythingIsSent) {
    ScriptedServer server;
    EXPECT_EQ(errorCodeOf(send(requestTo(server.url(), GetParam()))), codeOf(qv::HTTPErrorCode::InvalidHeader));
    EXPECT_EQ(server.connectionCount(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Rows, BadMethod, testing::Values("", "GET /x HTTP/1.1\r\nX: y\r\n\r\n", "GE T", "G\0T"s));

TEST(HTTPHeaders, KeepTheBytesOfAValue) {
    ScriptedServer server;
    server.respond(ScriptedServer::answer(200, "x"));
    auto request = requestTo(server.url());
    request.headers = {{"X-Text", "ü: \"a\"; b\tc"}, {"!#$%&'*+-.^_`|~09Az", "v"}};
    EXPECT_EQ(errorCodeOf(send(request)), 0);
    EXPECT_EQ(server.requests().at(0).header("X-Text"), "ü: \"a\"; b\tc");
    EXPECT_EQ(server.requests().at(0).header("!#$%&'*+-.^_`|~09Az"), "v");
}

}  // namespace
