#include "Support/HostProgram.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testsupport::runHost;

TEST(CommandLine, AloneShowsHelpAndIsAWrongCall) {
    const auto result = runHost({});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.output, IsEmpty());
    EXPECT_THAT(result.error, HasSubstr("scan"));
    EXPECT_THAT(result.error, HasSubstr("parse"));
    EXPECT_THAT(result.error, HasSubstr("note"));
}

TEST(CommandLine, HelpIsTheResult) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--help"}, {"-h"}, {"scan", "--help"}, {"parse", "--help"}, {"note", "--help"}}) {
        const auto result = runHost(arguments);
        EXPECT_EQ(result.status, 0) << arguments.front();
        EXPECT_THAT(result.output, HasSubstr("Usage")) << arguments.front();
        EXPECT_THAT(result.error, IsEmpty()) << arguments.front();
    }
}

TEST(CommandLine, HelpOfScanNamesEveryPublicOption) {
    const std::string help = runHost({"scan", "--help"}).output;
    for (const char* option : {"FRONT", "BACK", "--output", "-o", "--server", "--token-file", "--language",
                               "--skip-note", "--json", "--verbose", "QVCARDSCAN_TOKEN", "QVCARDSCAN_LOG"})
        EXPECT_THAT(help, HasSubstr(option));
    EXPECT_THAT(help, Not(HasSubstr("--recognizer")));
}

TEST(CommandLine, SaysItsVersion) {
    const auto result = runHost({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, testing::MatchesRegex("qvcardscan [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST(CommandLine, WrongCallsEndWithStatusTwoAndSayWhy) {
    const struct {
        std::vector<std::string> arguments;
        const char* said;
    } calls[] = {
        {{"--unknown"}, "--unknown"},
        {{"read", "x"}, "read"},
        {{"scan"}, "FRONT"},
        {{"scan", "a.jpg", "--colour"}, "--colour"},
        {{"scan", "a.jpg", "b.jpg", "c.jpg"}, "c.jpg"},
        {{"parse"}, "RESULT.xml"},
        {{"note"}, "RESULT.xml"},
        {{"note", "a", "b", "c"}, "c"},
        {{"scan", "a.jpg", "--language", "de_DE"}, "--language"},
        {{"scan", "a.jpg", "--language", "de\r\nauth: x"}, "--language"},
        {{"scan", "a.jpg", "--language", ""}, "--language"},
        {{"scan", "a.jpg", "--server", "cards.example.com"}, "--server"},
        {{"scan", "a.jpg", "--server", "ftp://cards.example.com/"}, "--server"},
        {{"scan", "a.jpg", "--server", ""}, "--server"},
        {{"scan", "a.jpg", "--token-file", "t"}, "--server"},
        {{"scan", "a.jpg", "--token", "secret"}, "--token"},
        {{"scan", "a.jpg", "-o", ""}, "--output"},
    };
    for (const auto& call : calls) {
        const auto result = runHost(call.arguments);
        EXPECT_EQ(result.status, 2) << call.said;
        EXPECT_THAT(result.output, IsEmpty()) << call.said;
        EXPECT_THAT(result.error, HasSubstr(call.said));
    }
}

TEST(CommandLine, ArgumentsCannotActOnTheTerminal) {
    const auto result = runHost({"scan", "a.jpg", "--\x1b]0;owned\x07"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.error, Not(HasSubstr("\x1b")));
    EXPECT_THAT(result.error, Not(HasSubstr("\x07")));
}

TEST(CommandLine, LoadsNoRecognitionCode) {
    auto call = testsupport::hostCall({"--version"});
    call.environment["LD_TRACE_LOADED_OBJECTS"] = "1";
    const std::string libraries = testsupport::runProcess(call).output;
    EXPECT_THAT(libraries, HasSubstr("libQVCardScan"));
    for (const char* name : {"tesseract", "lept", "opencv", "phonenumber"})
        EXPECT_THAT(libraries, Not(HasSubstr(name)));
}

TEST(CommandLine, OutputThatCannotBeWrittenIsStatusThree) {
    auto full = testsupport::hostCall({"--help"});
    full.outputFile = "/dev/full";
    const auto result = testsupport::runProcess(full);
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.error, HasSubstr("standard output"));

    auto closed = testsupport::hostCall({"--version"});
    closed.closesOutput = true;
    EXPECT_EQ(testsupport::runProcess(closed).status, 3);
}

}  // namespace
