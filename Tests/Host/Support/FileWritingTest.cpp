#include "Support/FileWriting.h"
#include "Support/ReadFile.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>

namespace {

namespace fs = std::filesystem;
using qvhost::ExitStatus;
using testing::HasSubstr;
using testsupport::readFile;
using testsupport::TemporaryFolder;

std::ptrdiff_t entriesIn(const fs::path& folder) {
    return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
}

TEST(FileWriting, WritesAndReplaces) {
    const TemporaryFolder folder;
    const std::string bytes("a\0\xFF\n", 4);
    EXPECT_FALSE(qvhost::writeFile(folder / "file", "old and longer"));
    EXPECT_FALSE(qvhost::writeFile(folder / "file", bytes));
    EXPECT_EQ(readFile(folder / "file"), bytes);
    EXPECT_EQ(entriesIn(folder.path()), 1);
}

TEST(FileWriting, FollowsTheUsersMask) {
    const TemporaryFolder folder;
    const mode_t before = ::umask(027);
    EXPECT_FALSE(qvhost::writeFile(folder / "file", "x"));
    ::umask(before);
    struct stat status {};
    ASSERT_EQ(::stat((folder / "file").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
}

TEST(FileWriting, SaysWhatCouldNotBeWritten) {
    const TemporaryFolder folder;
    const auto failure = qvhost::writeFile(folder / "missing/file", "x");
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->status, ExitStatus::NotWritten);
    EXPECT_THAT(failure->message, HasSubstr((folder / "missing/file").string()));
}

TEST(FileWriting, LeavesNothingBehindWhenItFails) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "taken/inside");
    EXPECT_TRUE(qvhost::writeFile(folder / "taken", "x"));
    EXPECT_EQ(entriesIn(folder.path()), 1);
}

TEST(FileWriting, MakesFoldersAndAcceptsThoseThere) {
    const TemporaryFolder folder;
    EXPECT_FALSE(qvhost::makeFolder(folder / "a/b"));
    EXPECT_FALSE(qvhost::makeFolder(folder / "a/b"));
    EXPECT_FALSE(qvhost::makeFolder(folder / "a/c/"));
    EXPECT_TRUE(fs::is_directory(folder / "a/b"));
    folder.write("file", "x");
    for (const char* name : {"file", "file/below"}) {
        const auto failure = qvhost::makeFolder(folder / name);
        ASSERT_TRUE(failure) << name;
        EXPECT_EQ(failure->status, ExitStatus::NotWritten);
        EXPECT_THAT(failure->message, HasSubstr((folder / name).string()));
    }
}

TEST(FileWriting, ReportsTheSystemsError) {
    EXPECT_EQ(qvhost::writeAll(-1, "x"), EBADF);
    EXPECT_EQ(qvhost::writeAll(-1, ""), 0);
}

}  // namespace
