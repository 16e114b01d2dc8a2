#include "Result/ResultWriter.h"

#include <gtest/gtest.h>

namespace qv::recognition {
namespace {

const std::string kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";

TEST(ResultWriterTest, WritesCompactly) {
    const Result result{
        "en",
        1000,
        600,
        90,
        {{"name", "John Smith", {10.4F, 20.6F, 100, 30}, 87}, {"email", "j@acme.com", {10, 60, 90, 20}, 98}}};
    EXPECT_EQ(writeResult(result), kHead +
                                       "<recoIndex lang=\"en\" objWidth=\"1000\" objHeight=\"600\">"
                                       "<item fldType=\"name\" x=\"10\" y=\"21\" w=\"100\" h=\"30\" orient=\"90\"><t "
                                       "w=\"87\">John Smith</t></item>"
                                       "<item fldType=\"email\" x=\"10\" y=\"60\" w=\"90\" h=\"20\" orient=\"90\"><t "
                                       "w=\"98\">j@acme.com</t></item>"
                                       "</recoIndex>");
}

TEST(ResultWriterTest, WritesACardWithoutItems) {
    EXPECT_EQ(writeResult({"de", 10, 20, 0, {}}), kHead + "<recoIndex lang=\"de\" objWidth=\"10\" objHeight=\"20\"/>");
}

std::string textOf(const std::string& text) {
    const std::string xml = writeResult({"en", 100, 100, 0, {{"name", text, {0, 0, 1, 1}, 50}}});
    const auto start = xml.find("<t w=\"50\">") + 10;
    return xml.substr(start, xml.find("</t>") - start);
}

TEST(ResultWriterTest, EscapesMarkup) {
    EXPECT_EQ(textOf("A & B <\"C\"> ]]>"), "A &amp; B &lt;&quot;C&quot;&gt; ]]&gt;");
}

TEST(ResultWriterTest, LeavesOutWhatXMLDoesNotAllow) {
    EXPECT_EQ(textOf(std::string("a\0b\x01\x1F", 5) + "\x7F\xEF\xBF\xBF" + "c\xFF"), "abc");
    EXPECT_EQ(textOf("a\tb\nc"), "a b c");
    EXPECT_EQ(textOf("Möbel 山田 😀"), "Möbel 山田 😀");
}

TEST(ResultWriterTest, HoldsNumbersInBounds) {
    const std::string xml =
        writeResult({"en", 100, 50, 0, {{"name", "x", {-5, 40, 500, 500}, 0}, {"title", "y", {0, 0, 1, 1}, 500}}});
    EXPECT_NE(xml.find("x=\"0\" y=\"40\" w=\"100\" h=\"10\""), std::string::npos);
    EXPECT_NE(xml.find("<t w=\"1\">"), std::string::npos);
    EXPECT_NE(xml.find("<t w=\"100\">"), std::string::npos);
}

}  // namespace
}  // namespace qv::recognition
