#include "Fields/Handle.h"
#include "Fields/Link.h"
#include "Recognition/Lines.h"

#include <gtest/gtest.h>

namespace qv::recognition {
namespace {

struct Row {
    const char* name;
    const char* line;
    std::vector<std::string> links;
};

class LinkTest : public testing::TestWithParam<Row> {};

TEST_P(LinkTest, Finds) {
    std::vector<std::string> found;
    for (const auto& claim : findLinks(lineOf(GetParam().line)))
        found.push_back(claim.text);
    EXPECT_EQ(found, GetParam().links);
}

INSTANTIATE_TEST_SUITE_P(Lines, LinkTest,
                         testing::Values(Row{"WithWWW", "www.acme.com", {"www.acme.com"}},
                                         Row{"WithScheme", "https://acme.com/team", {"https://acme.com/team"}},
                                         Row{"Bare", "yourcompany.com", {"yourcompany.com"}},
                                         Row{"Path", "www.bc.edu/here.html", {"www.bc.edu/here.html"}},
                                         Row{"LostDot", "wwwmywebsite.com", {"www.mywebsite.com"}},
                                         Row{"LostLastDot", "www.mywebsitecom", {"www.mywebsite.com"}},
                                         Row{"Comma", "www,acme.com", {"www.acme.com"}},
                                         Row{"Cut", "www. acme.com", {"www.acme.com"}},
                                         Row{"Labelled", "Web: www.acme.com", {"www.acme.com"}},
                                         Row{"GluedLabel", "web:www.acme.com", {"www.acme.com"}},
                                         Row{"Email", "jane@acme.com", {}}, Row{"Degree", "Ph.D", {}},
                                         Row{"Street", "12 High St.No", {}}, Row{"Name", "Jane Doe", {}},
                                         Row{"Empty", "", {}}),
                         [](const auto& row) { return row.param.name; });

TEST(LinkTypeTest, KnowsATwitterProfile) {
    const auto claims = findLinks(lineOf("twitter.com/janedoe"));
    ASSERT_EQ(claims.size(), 1U);
    EXPECT_EQ(claims[0].type, FieldType::Twitter);
}

struct HandleRow {
    const char* name;
    const char* line;
    const char* text;
    FieldType type;
};

class HandleTest : public testing::TestWithParam<HandleRow> {};

TEST_P(HandleTest, Finds) {
    const auto claims = findHandles(lineOf(GetParam().line));
    ASSERT_EQ(claims.size(), 1U);
    EXPECT_EQ(claims[0].text, GetParam().text);
    EXPECT_EQ(claims[0].type, GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(Lines, HandleTest,
                         testing::Values(HandleRow{"At", "@janedoe", "@janedoe", FieldType::Twitter},
                                         HandleRow{"Twitter", "Twitter: jane_doe", "jane_doe", FieldType::Twitter},
                                         HandleRow{"Skype", "Skype: jane.doe", "jane.doe", FieldType::Skype},
                                         HandleRow{"SkypeGlued", "skype:jane.doe", "jane.doe", FieldType::Skype},
                                         HandleRow{"SkypeID", "Skype ID: jane.doe", "jane.doe", FieldType::Skype}),
                         [](const auto& row) { return row.param.name; });

TEST(HandleNoneTest, FindsNone) {
    for (const char* line : {"Jane Doe", "Skype", "@", "jane@acme.com", "Twitter", ""})
        EXPECT_TRUE(findHandles(lineOf(line)).empty()) << line;
}

}  // namespace
}  // namespace qv::recognition
