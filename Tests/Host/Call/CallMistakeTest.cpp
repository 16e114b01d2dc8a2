#include "Support/HostProgram.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using testsupport::runHost;

struct Call {
    std::vector<std::string> arguments;
    std::string said;
};

void expectSaid(const Call& call, const std::string& help) {
    const auto result = runHost(call.arguments);
    EXPECT_EQ(result.status, 2) << call.said;
    EXPECT_EQ(result.output, "") << call.said;
    EXPECT_EQ(result.error, "qvcardscan: " + call.said + "\nFor help: " + help + " --help\n");
}

TEST(CallMistake, WhatTheProgramDoesNotKnow) {
    const Call calls[] = {
        {{"scna", "a.jpg"}, "There is no command \"scna\". Did you mean scan?"},
        {{"xyzzy"}, "There is no command \"xyzzy\". The commands are "},
        {{"--versoin"}, "There is no option \"--versoin\". Did you mean --version?"},
        {{"--frobnicate"}, "There is no option \"--frobnicate\"."},
    };
    for (const Call& call : calls) {
        const auto result = runHost(call.arguments);
        EXPECT_EQ(result.status, 2) << call.said;
        EXPECT_EQ(result.output, "") << call.said;
        EXPECT_THAT(result.error, testing::StartsWith("qvcardscan: " + call.said));
        EXPECT_THAT(result.error, testing::EndsWith("\nFor help: qvcardscan --help\n"));
    }
}

TEST(CallMistake, WhatACommandDoesNotTake) {
    const Call calls[] = {
        {{"scan", "a.jpg", "--jsn"}, "scan has no option \"--jsn\". Did you mean --json?"},
        {{"scan", "--jsn"}, "scan has no option \"--jsn\". Did you mean --json?"},
        {{"scan", "a.jpg", "--jsn=3"}, "scan has no option \"--jsn\". Did you mean --json?"},
        {{"scan", "a.jpg", "-x"}, "scan has no option \"-x\"."},
        {{"--json", "scan", "a.jpg"}, "--json belongs behind the command: qvcardscan scan … --json."},
        {{"scan", "a", "b", "c", "d"}, "\"c\" is more than scan takes: FRONT [BACK]."},
    };
    for (const Call& call : calls)
        expectSaid(call, "qvcardscan scan");
}

TEST(CallMistake, WhatIsMissingOrTooMuch) {
    const Call calls[] = {
        {{"scan"}, "scan needs FRONT: photograph of the front (JPEG, PNG, TIFF, WebP)."},
        {{"scan", "a.jpg", "-o"}, "--output needs a value behind it: --output DIR."},
        {{"scan", "a.jpg", "-o", "x", "-o", "y"}, "--output is given more than once."},
        {{"scan", "a.jpg", "--json=3"}, "--json takes no value."},
        {{"scan", "a.jpg", "--token-file", "t"}, "--token-file works only together with --server."},
        {{"scan", "a.jpg", "--language", "de_DE"},
         "--language: a tag of letters, digits and hyphens is needed here, such as de or zh-Hant."},
    };
    for (const Call& call : calls)
        expectSaid(call, "qvcardscan scan");
    expectSaid({{"parse"}, "parse needs RESULT.xml: file with the answer; - for standard input."}, "qvcardscan parse");
    expectSaid({{"note", "a", "b", "c"}, "\"c\" is more than note takes: RESULT.xml [RESULT2.xml]."},
               "qvcardscan note");
}

TEST(CallMistake, CommandsInsideOfCommands) {
    expectSaid({{"contacts"}, "A command is needed behind contacts. The commands are list, show and find."},
               "qvcardscan contacts");
    expectSaid({{"contacts", "lst"}, "There is no command \"lst\". Did you mean list?"}, "qvcardscan contacts");
    expectSaid({{"contacts", "list", "--jsn"}, "contacts list has no option \"--jsn\". Did you mean --json?"},
               "qvcardscan contacts list");
    expectSaid({{"contacts", "find", "a", "b"}, "\"b\" is more than contacts find takes: TEXT."},
               "qvcardscan contacts find");
}

TEST(CallMistake, AFileAloneIsMeantToBeRead) {
    const testsupport::TemporaryFolder folder;
    const std::string file = folder.write("card.jpg", "x").string();
    expectSaid({{file}, "There is no command \"" + file + "\". Did you mean \"qvcardscan scan " + file + "\"?"},
               "qvcardscan");
}

TEST(CallMistake, SecretsAreNotRepeated) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"scan", "a.jpg", "--token=hunter2"}, {"scan", "a.jpg", "--token", "hunter2"}}) {
        const auto result = runHost(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.error, HasSubstr("\"--token\". Did you mean --token-file?"));
        EXPECT_THAT(result.error, Not(HasSubstr("hunter2")));
    }
}

}  // namespace
