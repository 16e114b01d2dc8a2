#include "Support/FileReading.h"
#include "Support/ReadFile.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using qvhost::ExitStatus;
using testing::HasSubstr;
using testsupport::TemporaryFolder;

TEST(FileReading, ReadsUpToTheLimitAndNotBeyond) {
    const TemporaryFolder folder;
    const std::string bytes(600'000, 'x');
    const auto file = folder.write("file", bytes);
    const auto whole = qvhost::readFile(file, bytes.size());
    ASSERT_TRUE(whole);
    EXPECT_EQ(std::string(whole->begin(), whole->end()), bytes);
    const auto tooMuch = qvhost::readFile(file, bytes.size() - 1);
    ASSERT_FALSE(tooMuch);
    EXPECT_EQ(tooMuch.failure().status, ExitStatus::WrongCall);
    EXPECT_THAT(tooMuch.failure().message, HasSubstr(file.string()));
}

TEST(FileReading, ReadsAnEmptyFile) {
    const TemporaryFolder folder;
    const auto data = qvhost::readFile(folder.write("empty", ""), 10);
    ASSERT_TRUE(data);
    EXPECT_TRUE(data->empty());
}

TEST(FileReading, ADashIsAFileUnlessItMayBeInput) {
    const auto data = qvhost::readFile("-", 10);
    ASSERT_FALSE(data);
    EXPECT_THAT(data.failure().message, HasSubstr("\"-\""));
}

TEST(FileReading, AFolderIsNoFile) {
    const TemporaryFolder folder;
    const auto data = qvhost::readFile(folder.path(), 10);
    ASSERT_FALSE(data);
    EXPECT_EQ(data.failure().status, ExitStatus::WrongCall);
    EXPECT_EQ(data.failure().message, "\"" + folder.path().string() + "\" is a folder. Name a file in it.");
}

TEST(FileReading, APipeInAFolderIsRefusedWithoutWaiting) {
    const TemporaryFolder folder;
    const std::string pipe = (folder / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const auto data = qvhost::readFile(pipe, 10);
    ASSERT_FALSE(data);
    EXPECT_EQ(data.failure().status, ExitStatus::WrongCall);
    EXPECT_THAT(data.failure().message, HasSubstr("\"" + pipe + "\" is a pipe"));
}

TEST(FileReading, APipeThatWasHandedOverIsRead) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    ASSERT_EQ(::write(ends[1], "<a/>", 4), 4);
    ::close(ends[1]);
    const auto data = qvhost::readFile("/dev/fd/" + std::to_string(ends[0]), 10);
    ::close(ends[0]);
    ASSERT_TRUE(data) << data.failure().message;
    EXPECT_EQ(std::string(data->begin(), data->end()), "<a/>");
}

}  // namespace
