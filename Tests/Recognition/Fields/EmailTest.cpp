#include "Fields/Email.h"
#include "Fields/Internet.h"
#include "Recognition/Lines.h"

#include <gtest/gtest.h>

namespace qv::recognition {
namespace {

struct Row {
    const char* name;
    const char* line;
    std::vector<std::string> emails;
};

class EmailTest : public testing::TestWithParam<Row> {};

TEST_P(EmailTest, Finds) {
    std::vector<std::string> found;
    for (const auto& claim : findEmails(lineOf(GetParam().line))) {
        EXPECT_EQ(claim.type, FieldType::Email);
        found.push_back(claim.text);
    }
    EXPECT_EQ(found, GetParam().emails);
}

INSTANTIATE_TEST_SUITE_P(Lines, EmailTest,
                         testing::Values(Row{"Plain", "jane.doe@acme.com", {"jane.doe@acme.com"}},
                                         Row{"Labelled", "E-mail: jane@acme.com", {"jane@acme.com"}},
                                         Row{"GluedLabel", "E:jane@acme.com", {"jane@acme.com"}},
                                         Row{"Capitals", "JANE@ACME.COM", {"JANE@ACME.COM"}},
                                         Row{"Wrapped", "<jane@acme.com>,", {"jane@acme.com"}},
                                         Row{"LostDot", "sophie@mywebsitecom", {"sophie@mywebsite.com"}},
                                         Row{"CommaForDot", "jane@acme,com", {"jane@acme.com"}},
                                         Row{"CutBeforeSign", "jane @acme.com", {"jane@acme.com"}},
                                         Row{"CutAfterSign", "jane@ acme.com", {"jane@acme.com"}},
                                         Row{"MisreadSign", "jane©acme.com", {"jane@acme.com"}},
                                         Row{"Two", "jane@acme.com joe@acme.com", {"jane@acme.com", "joe@acme.com"}},
                                         Row{"ReservedEnding", "a.b@firm.example", {"a.b@firm.example"}},
                                         Row{"Handle", "@janedoe", {}}, Row{"NoEnding", "jane@acme", {}},
                                         Row{"UnknownEnding", "jane@acme.qqq", {}}, Row{"OnlySign", "@", {}},
                                         Row{"NoSign", "jane.acme.com", {}}, Row{"Empty", "", {}}),
                         [](const auto& row) { return row.param.name; });

TEST(EmailClaimTest, TakesTheLabelWithIt) {
    const auto claims = findEmails(lineOf("Email: jane@acme.com Tel"));
    ASSERT_EQ(claims.size(), 1U);
    EXPECT_EQ(claims[0].first, 0U);
    EXPECT_EQ(claims[0].end, 2U);
}

TEST(EmailSnapTest, TakesAHostThatLooksTheSame) {
    EXPECT_EQ(snappedToHost("jane@acrne.com", "acme.com"), "jane@acrne.com");
    EXPECT_EQ(snappedToHost("jane@acme1.com", "acmel.com"), "jane@acmel.com");
    EXPECT_EQ(snappedToHost("hello@greatsite.com", "reatsite.com"), "hello@reatsite.com");
    EXPECT_EQ(snappedToHost("jane@gmail.com", "acme.com"), "jane@gmail.com");
    EXPECT_EQ(snappedToHost("jane@acme.com", ""), "jane@acme.com");
}

TEST(InternetTest, ReadsHosts) {
    EXPECT_EQ(hostOf("jane@Acme.com"), "acme.com");
    EXPECT_EQ(hostOf("https://www.acme.com/a?b"), "acme.com");
    EXPECT_EQ(registeredLabel("www.mail.acme.co.uk"), "acme");
    EXPECT_EQ(registeredLabel("acme.com"), "acme");
    EXPECT_EQ(countryOfHost("acme.de"), "DE");
    EXPECT_EQ(countryOfHost("acme.co.uk"), "GB");
    EXPECT_EQ(countryOfHost("acme.io"), "");
    EXPECT_EQ(countryOfHost("acme.com"), "");
    EXPECT_EQ(countryOfHost(""), "");
}

}  // namespace
}  // namespace qv::recognition
