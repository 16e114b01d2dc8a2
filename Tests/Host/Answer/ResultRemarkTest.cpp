#include "Answer/ResultRemark.h"
#include "Support/HostProgram.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using testsupport::hostCall;
using testsupport::runHost;
using testsupport::runProcess;

struct Answer {
    const char* row;
    const char* text;
    const char* remark;
};

const Answer kWithoutCard[] = {
    {"empty", "", "NAME is empty. "},
    {"blanks only", " \n\t\r\n", "NAME is empty. "},
    {"text", "hello", "NAME is not XML: syntax error (line 1, column 1). Give the answer "},
    {"text further down", "\n\n  hello", "NAME is not XML: syntax error (line 3, column 3). Give "},
    {"JSON", "{\"name\": \"X\"}", "NAME is not XML: not well-formed (invalid token) (line 1, column 1). Give "},
    {"a comment only", "<!-- -->", "NAME is not XML: no element found (line 1, column 9). Give "},
    {"broken", "<a>\n<b></a>", "NAME is broken XML without a card: mismatched tag (line 2, column 6). Give "},
    {"another document", "<html><body/></html>",
     "NAME is XML, but no recognition result: its outermost element is <html>, not <recoIndex>. Give the answer "},
};

std::string named(std::string text) {
    return "qvcardscan: " + text.replace(0, 4, "Standard input");
}

TEST(ResultRemark, SaysWhyThereIsNoCard) {
    for (const Answer& answer : kWithoutCard) {
        for (const bool asJSON : {false, true}) {
            auto call = hostCall(asJSON ? std::vector<std::string>{"parse", "-", "--json"}
                                        : std::vector<std::string>{"parse", "-"});
            call.input = answer.text;
            const auto result = runProcess(call);
            EXPECT_EQ(result.status, 0) << answer.row;
            EXPECT_EQ(result.output, asJSON ? "null\n" : "The answer holds no card.\n") << answer.row;
            EXPECT_THAT(result.error, StartsWith(named(answer.remark))) << answer.row;
        }
    }
}

TEST(ResultRemark, NamesTheFile) {
    const testsupport::TemporaryFolder folder;
    const std::string file = folder.write("page.xml", "<html/>").string();
    EXPECT_THAT(runHost({"parse", file}).error, HasSubstr("\"" + file + "\" is XML, but no recognition result"));
    const auto note = runHost({"note", file});
    EXPECT_EQ(note.status, 1);
    EXPECT_THAT(note.output, IsEmpty());
    EXPECT_THAT(note.error, HasSubstr("\"" + file + "\" is XML, but no recognition result"));
    EXPECT_THAT(note.error, HasSubstr("no note was made"));
}

TEST(ResultRemark, AResultThatBreaksOffIsToldApart) {
    const Answer answers[] = {
        {"within", "<recoIndex><item fldType=\"name\"><t w=\"1\">X</t>",
         "NAME is broken XML: no element found (line 1, column 47). Its fields do not count, because it breaks off.\n"},
        {"behind", "<recoIndex><item fldType=\"name\"><t w=\"1\">X</t></item></recoIndex>junk",
         "NAME is broken XML: junk after document element (line 1, column 66). What came before that counts.\n"},
    };
    for (const Answer& answer : answers) {
        auto call = hostCall({"parse", "-"});
        call.input = answer.text;
        const auto result = runProcess(call);
        EXPECT_EQ(result.status, 0) << answer.row;
        EXPECT_EQ(result.error, named(answer.remark)) << answer.row;
    }
}

TEST(ResultRemark, AWholeResultNeedsNone) {
    for (const char* text : {"<recoIndex/>", "<recoIndex><item fldType=\"name\"/></recoIndex>"}) {
        EXPECT_EQ(qvhost::resultRemark({text, "x"}), std::nullopt) << text;
        auto call = hostCall({"parse", "-"});
        call.input = text;
        EXPECT_THAT(runProcess(call).error, IsEmpty()) << text;
    }
    auto call = hostCall({"parse", "-"});
    call.input = "<recoIndex/>";
    EXPECT_THAT(runProcess(call).output, HasSubstr("No fields were recognised."));
}

TEST(ResultRemark, HostileNamesStayShortAndHarmless) {
    const std::string name(1'000'000, 'x');
    const auto remark = qvhost::resultRemark({"<" + name + "/>", "f"});
    ASSERT_TRUE(remark);
    EXPECT_LT(remark->size(), 300U);
    auto call = hostCall({"parse", "-"});
    call.input = "<a\xC2\xB7\xE2\x80\xAE/>";
    EXPECT_THAT(runProcess(call).error, Not(HasSubstr("\xE2\x80\xAE")));
}

}  // namespace
