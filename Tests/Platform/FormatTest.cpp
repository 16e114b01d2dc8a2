#include "QVPlatform/Format.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct FillRow {
    const char* name;
    const char* format;
    std::vector<std::string> arguments;
    const char* expected;
};

class FillFormat : public testing::TestWithParam<FillRow> {};

std::string fill(const FillRow& row) {
    switch (row.arguments.size()) {
        case 0:
            return qv::fillFormat(row.format, {});
        case 1:
            return qv::fillFormat(row.format, {row.arguments[0]});
        default:
            return qv::fillFormat(row.format, {row.arguments[0], row.arguments[1]});
    }
}

TEST_P(FillFormat, PutsArgumentsInByPosition) {
    EXPECT_EQ(fill(GetParam()), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FillFormat,
    testing::Values(FillRow{"Empty", "", {}, ""}, FillRow{"NoPlace", "plain", {}, "plain"},
                    FillRow{"Object", "a %@ b", {"x"}, "a x b"}, FillRow{"Number", "n=%d", {"7"}, "n=7"},
                    FillRow{"LongNumber", "n=%ld;", {"7"}, "n=7;"},
                    FillRow{"InOrder", "%@/%@", {"first", "second"}, "first/second"},
                    FillRow{"Adjacent", "%@%@", {"a", "b"}, "ab"}, FillRow{"PercentSign", "100%%", {}, "100%"},
                    FillRow{"PercentBeforePlace", "%%%@", {"x"}, "%x"},
                    FillRow{"PercentHidesPlace", "%%@", {"x"}, "%@"},
                    FillRow{"ArgumentIsNotAFormat", "<%@|%@>", {"%@", "%d%%"}, "<%@|%d%%>"},
                    FillRow{"MissingArgument", "%@ and %@", {"x"}, "x and (null)"},
                    FillRow{"SpareArgument", "%@", {"x", "y"}, "x"}, FillRow{"EmptyArgument", "[%@]", {""}, "[]"},
                    FillRow{"OtherConversion", "%s %x", {"x"}, "%s %x"}, FillRow{"PercentAtEnd", "50%", {}, "50%"},
                    FillRow{"HalfLongNumber", "%l", {"x"}, "%l"}, FillRow{"NonASCII", "ü%@ß", {"名"}, "ü名ß"}),
    [](const auto& row) { return row.param.name; });

struct Described {
    std::string description() const { return "<described>"; }
};

TEST(Format, DescribesValuesOfSeveralTypes) {
    EXPECT_EQ(qv::format("%@ %@ %@ %d %ld", std::string("s"), std::string_view("v"), "c", 3, -4L), "s v c 3 -4");
    EXPECT_EQ(qv::format("%@", Described{}), "<described>");
    EXPECT_EQ(qv::format("%@", std::make_shared<Described>()), "<described>");
    EXPECT_EQ(qv::format("%@", std::optional<std::string>("there")), "there");
    EXPECT_EQ(qv::format("%d", std::optional<int>(5)), "5");
}

TEST(Format, ShowsAbsentValuesAsNull) {
    EXPECT_EQ(qv::format("%@", std::optional<std::string>()), "(null)");
    EXPECT_EQ(qv::format("%@", std::shared_ptr<Described>()), "(null)");
    EXPECT_EQ(qv::format("%@", static_cast<const char*>(nullptr)), "(null)");
    EXPECT_EQ(qv::format("%@", std::optional<std::string>("")), "") << "an empty text is not an absent one";
}

TEST(Format, KeepsNulBytesOfArguments) {
    EXPECT_EQ(qv::format("[%@]", std::string("a\0b", 3)), std::string("[a\0b]", 5));
}

TEST(Format, DescribesDictionariesInKeyOrder) {
    using Attributes = std::map<std::string, std::string>;
    EXPECT_EQ(qv::describe(Attributes{{"b", "2"}, {"a", "1"}}), "{a = \"1\"; b = \"2\"}");
    EXPECT_EQ(qv::describe(Attributes{{"a", "1"}}), "{a = \"1\"}");
    EXPECT_EQ(qv::describe(Attributes{}), "{}");
    EXPECT_EQ(qv::format("attributes: %@", Attributes{{"type", "%@"}}), "attributes: {type = \"%@\"}");
}

}  // namespace
