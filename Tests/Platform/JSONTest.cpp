#include "QVPlatform/JSON.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using qv::JSON;

qv::Data bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

std::optional<JSON> read(std::string_view text, qv::JSONLimits limits = {}) {
    return JSON::read(bytesOf(text), limits);
}

TEST(JSON, ReadsMembersAndElements) {
    const auto json = read(R"({"name": "Jörg \u00e9 \"x\"", "list": ["a", {"b": true}, 7], "no": false, "empty": []})");
    ASSERT_TRUE(json);
    EXPECT_TRUE(json->isObject());
    EXPECT_EQ(json->member("name").string(), "Jörg é \"x\"");
    EXPECT_EQ(json->member("no").boolean(), false);
    const auto list = json->member("list").elements();
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list[0].string(), "a");
    EXPECT_EQ(list[1].member("b").boolean(), true);
    EXPECT_TRUE(json->member("empty").elements().empty());
}

TEST(JSON, AnswersAbsentToWhatIsNotThereOrOfAnotherKind) {
    const auto json = read(R"({"text": "a", "number": 7, "null": null, "list": [1], "object": {}})");
    ASSERT_TRUE(json);
    for (const char* name : {"number", "null", "list", "object", "missing", "", "text "})
        EXPECT_EQ(json->member(name).string(), std::nullopt) << name;
    for (const char* name : {"text", "number", "null", "object", "missing"}) {
        EXPECT_TRUE(json->member(name).elements().empty()) << name;
        EXPECT_EQ(json->member(name).boolean(), std::nullopt) << name;
    }
    EXPECT_EQ(json->member("text").member("text").string(), std::nullopt);
    EXPECT_EQ(json->member("list").member("0").string(), std::nullopt);
    EXPECT_FALSE(json->member("list").isObject());
    EXPECT_EQ(json->string(), std::nullopt);
    EXPECT_FALSE(JSON().isObject());
    EXPECT_TRUE(JSON().elements().empty());
    EXPECT_EQ(JSON().boolean(), std::nullopt);
}

TEST(JSON, KeepsPartsWithoutTheWhole) {
    const JSON part = read(R"({"a": [{"b": "deep"}]})")->member("a").elements().front().member("b");
    EXPECT_EQ(part.string(), "deep");
}

TEST(JSON, TakesTheLastOfMembersWithOneName) {
    EXPECT_EQ(read(R"({"a": "1", "a": "2"})")->member("a").string(), "2");
}

TEST(JSON, RefusesWhatIsNoJSON) {
    for (const char* text : {"", " ", "{", "}", "[1,]", "{\"a\"}", "{} {}", "nul", "\"\x01\"", "'a'", "{\"a\":01}",
                             "<html></html>", "\"open", "\"\\", "[\"\\\"]", "\"\\ud800\"", "// c\n{}"}) {
        EXPECT_FALSE(read(text)) << text;
    }
}

TEST(JSON, RefusesWhatIsNotUTF8) {
    EXPECT_FALSE(read("{\"a\": \"\xFF\"}"));
    EXPECT_FALSE(read("{\"a\": \"\xC3\"}"));
    EXPECT_FALSE(read("{\"a\": \"\xC0\xAF\"}")) << "an overlong form";
    EXPECT_FALSE(read("{\"a\": \"\xED\xA0\x80\"}")) << "a surrogate";
}

TEST(JSON, KeepsCharactersThatOnlyAnEscapeCanHold) {
    EXPECT_EQ(read(R"("a\u0000b\n")")->string(), std::string("a\0b\n", 4));
}

std::string nested(std::size_t depth, char open, char close) {
    return std::string(depth, open) + std::string(depth, close);
}

TEST(JSON, RefusesWhatIsTooDeep) {
    EXPECT_TRUE(read(nested(32, '[', ']')));
    EXPECT_FALSE(read(nested(33, '[', ']')));
    EXPECT_TRUE(read("[[1],[2],[3]]", {.maximumDepth = 2}));
    EXPECT_FALSE(read("[[1],[[2]]]", {.maximumDepth = 2}));
    EXPECT_FALSE(read(R"({"a":{"b":{}}})", {.maximumDepth = 2}));
    EXPECT_FALSE(read(std::string(1'000'000, '['))) << "without a stack overflow";
    EXPECT_FALSE(read(nested(400'000, '[', ']')));
}

TEST(JSON, CountsNoBracketsInStrings) {
    EXPECT_TRUE(read(R"(["[[[[", "\"[[[", "\\", "]]]"])", {.maximumDepth = 1}));
    EXPECT_FALSE(read(R"(["\\", [1]])", {.maximumDepth = 1})) << "the string ends behind an escaped backslash";
}

TEST(JSON, RefusesWhatIsTooLarge) {
    EXPECT_TRUE(read("\"12\"", {.maximumSize = 4}));
    EXPECT_FALSE(read("\"123\"", {.maximumSize = 4}));
    EXPECT_TRUE(read("\"" + std::string((1U << 20) - 2, 'a') + "\""));
    EXPECT_FALSE(read("\"" + std::string((1U << 20) - 1, 'a') + "\""));
}

TEST(JSON, SurvivesNumbersBeyondAllMeasure) {
    EXPECT_FALSE(read("{\"a\": 1e999999}")) << "no such number";
    EXPECT_TRUE(read("{\"a\": 123456789012345678901234567890}"));
}

}  // namespace
