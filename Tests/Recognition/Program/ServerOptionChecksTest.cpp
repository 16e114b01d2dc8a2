#include "Program/ServerOptionChecks.h"
#include "Recognition/Program/ServerCall.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qv::recognition {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using testsupport::TemporaryFolder;

TEST(ServerOptionChecks, APortIsANumberOf16Bits) {
    for (const char* port : {"0", "1", "8080", "65535"})
        EXPECT_EQ(objectionToPort(port), "") << port;
    for (const char* port : {"", "65536", "99999", "-1", "http", "80a", " 80", "0x50", "99999999999999999999"})
        EXPECT_THAT(objectionToPort(port), HasSubstr("is no port")) << port;
}

TEST(ServerOptionChecks, TheProgramNamesThePortsThereAre) {
    const auto result = callServer({"--port", "99999"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(
        result.error,
        "qvcardrecod: --port: \"99999\" is no port. Give a number from 1 to 65535, or 0 for the system's choice.\n"
        "For help: qvcardrecod --help\n");
}

TEST(ServerOptionChecks, UnknownWordsAreNamed) {
    EXPECT_EQ(callServer({"--nonsense"}).error,
              "qvcardrecod: There is no option \"--nonsense\".\nFor help: qvcardrecod --help\n");
    EXPECT_EQ(callServer({"card.jpg", "b.jpg"}).error,
              "qvcardrecod: \"card.jpg\" is not expected: there are only options.\nFor help: qvcardrecod --help\n");
    EXPECT_EQ(callServer({"--token=sesame"}).error,
              "qvcardrecod: There is no option \"--token\".\nFor help: qvcardrecod --help\n");
}

TEST(ServerOptionChecks, OtherWrongCallsPointToTheHelp) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--nonsense"}, {"--workers", "0"}, {"--port"}, {"--quiet", "--verbose"}}) {
        const auto result = callServer(arguments);
        EXPECT_EQ(result.status, 2) << arguments[0];
        EXPECT_THAT(result.error, StartsWith("qvcardrecod: ")) << arguments[0];
        EXPECT_THAT(result.error, EndsWith(".\nFor help: qvcardrecod --help\n")) << arguments[0];
    }
}

TEST(ServerOptionChecks, WarnsOnlyWhenStrangersMayCome) {
    ServerOptions options;
    for (const char* address : {"127.0.0.1", "127.8.8.8", "::1", "::ffff:127.0.0.1", "999.1.1.1", ""}) {
        options.address = address;
        EXPECT_EQ(warningAbout(options), "") << address;
    }
    for (const char* address : {"0.0.0.0", "::", "192.0.2.1", "2001:db8::1", "::ffff:192.0.2.1"}) {
        options.address = address;
        EXPECT_THAT(warningAbout(options), HasSubstr(std::string("whoever reaches ") + address)) << address;
    }
    options.token = "sesame";
    EXPECT_EQ(warningAbout(options), "");
}

// Nobody has an address that is kept for documents, so nothing is ever listened to here.
TEST(ServerOptionChecks, TheProgramWarnsAlsoWhenItIsQuiet) {
    const std::string warning =
        "qvcardrecod: Warning: whoever reaches 192.0.2.1 may have cards read here, because there is no token. Give one "
        "with --token-file, or leave --listen out.\n";
    const auto open = callServer({"--listen", "192.0.2.1", "--quiet"});
    EXPECT_EQ(open.status, 1);
    EXPECT_THAT(open.error, StartsWith(warning + "qvcardrecod: cannot listen on 192.0.2.1"));
    const TemporaryFolder folder;
    const auto closed = callServer({"--listen", "192.0.2.1", "--token-file", folder.write("token", "sesame").string()});
    EXPECT_THAT(closed.error, StartsWith("qvcardrecod: cannot listen on 192.0.2.1"));
}

TEST(ServerOptionChecks, ADebugFolderIsMadeAndLeftEmpty) {
    const TemporaryFolder folder;
    const auto inner = folder / "a/b";
    EXPECT_EQ(objectionToDebugFolder(inner), "");
    EXPECT_TRUE(std::filesystem::is_empty(inner));
    EXPECT_EQ(objectionToDebugFolder(inner), "") << "that is there already";
}

TEST(ServerOptionChecks, ADebugFolderThatCannotKeepAnythingIsToldAtTheStart) {
    const TemporaryFolder folder;
    const std::string file = folder.write("file", "").string();
    const struct {
        std::string folder;
        std::string why;
    } rows[] = {
        {file, "is a file. Name a folder."},
        {file + "/below", "cannot be made: Not a directory. Name another folder."},
        {"/proc/self/fd", "cannot be written to: "},
    };
    for (const auto& row : rows) {
        const auto result = callServer({"--debug-dir", row.folder});
        EXPECT_EQ(result.status, 1) << row.folder;
        EXPECT_EQ(result.output, "") << row.folder;
        EXPECT_THAT(result.error, StartsWith("qvcardrecod: --debug-dir: \"" + row.folder + "\" " + row.why));
    }
}

}  // namespace
}  // namespace qv::recognition
