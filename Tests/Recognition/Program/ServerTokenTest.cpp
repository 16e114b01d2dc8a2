#include "Program/ServerToken.h"
#include "Recognition/Program/ServerCall.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qv::recognition {
namespace {

using testing::HasSubstr;
using testing::Not;
using testsupport::TemporaryFolder;

/// What the program says of a token file that it cannot use.
void expectRefused(const std::string& file, const std::string& why) {
    const auto result = callServer({"--token-file", file});
    EXPECT_EQ(result.status, 1) << why;
    EXPECT_EQ(result.output, "") << why;
    EXPECT_EQ(result.error, "qvcardrecod: --token-file: \"" + file + "\" " + why + "\n");
}

TEST(ServerToken, SaysWhatIsWrongWithTheFile) {
    const TemporaryFolder folder;
    expectRefused((folder / "missing").string(),
                  "cannot be read: No such file or directory. Check its name and permissions.");
    expectRefused(folder.path().string(), "is a folder. Name a file in it.");
    expectRefused(folder.write("empty", "").string(), "is empty. Its first line has to be the token.");
    expectRefused(folder.write("blank", "\nsesame\n").string(), "has an empty first line, which has to be the token.");
    expectRefused(folder.write("long", std::string(4097, 'x')).string(),
                  "has a first line of more than 4096 bytes. The token has to be shorter.");
}

TEST(ServerToken, IsTheFirstLine) {
    const TemporaryFolder folder;
    for (const char* text : {"sesame", "sesame\n", "sesame\r\n", "sesame\nopen\n"}) {
        const ServerToken taken = ServerToken::fromFile(folder.write("token", text).string());
        EXPECT_EQ(taken.token, "sesame");
        EXPECT_EQ(taken.problem, "");
    }
    EXPECT_EQ(ServerToken::fromFile(folder.write("long", std::string(4096, 'x') + "\n").string()).token.size(), 4096U);
}

TEST(ServerToken, AParentHasToGiveOne) {
    const auto result = callServer({"--embedded"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(
        result.error,
        "qvcardrecod: There is no token on standard input. With --embedded its first line has to be the token.\n");
}

TEST(ServerToken, NoMessageRepeatsIt) {
    const TemporaryFolder folder;
    const std::string secret = "sesame-opens-the-door";
    const auto result = callServer(
        {"--token-file", folder.write("token", secret).string(), "--debug-dir", folder.write("file", "").string()});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("--debug-dir"));
    EXPECT_THAT(result.error, Not(HasSubstr(secret)));
}

}  // namespace
}  // namespace qv::recognition
