#include "Support/FileReading.h"
#include "Support/ReadFile.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

TEST(FileReading, ResultsAreStrictUTF8) {
    const TemporaryFolder folder;
    for (const char* bytes : {"\xC0\x80", "\xED\xA0\x80", "\xE2\x82", "\xFF"})
        EXPECT_FALSE(qvhost::readResultText(folder.write("bad", bytes)));
    const auto text = qvhost::readResultText(folder.write("good", "\xEF\xBB\xBF<a/>"));
    ASSERT_TRUE(text);
    EXPECT_EQ(*text, "\xEF\xBB\xBF<a/>");
}

}  // namespace
