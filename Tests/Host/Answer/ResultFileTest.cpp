#include "Answer/ResultFile.h"
#include "Support/HostProgram.h"
#include "Support/ReadFile.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using qvhost::ExitStatus;
using qvhost::ResultFile;
using testing::HasSubstr;
using testsupport::TemporaryFolder;

TEST(ResultFile, IsStrictUTF8) {
    const TemporaryFolder folder;
    for (const char* bytes : {"\xC0\x80", "\xED\xA0\x80", "\xE2\x82", "\xFF"}) {
        const auto file = ResultFile::read(folder.write("bad", bytes).string());
        ASSERT_FALSE(file);
        EXPECT_EQ(file.failure().status, ExitStatus::WrongCall);
        EXPECT_THAT(file.failure().message, HasSubstr("UTF-8"));
    }
}

TEST(ResultFile, KeepsEveryByteAndItsName) {
    const TemporaryFolder folder;
    const std::string path = folder.write("good", "\xEF\xBB\xBF<a/>").string();
    const auto file = ResultFile::read(path);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->text, "\xEF\xBB\xBF<a/>");
    EXPECT_EQ(file->name, "\"" + path + "\"");
}

TEST(ResultFile, APictureIsForScan) {
    for (const char* name : {"front.jpg", "back.png", "card.tiff", "card.webp"}) {
        const std::string path = testsupport::hostData(name);
        const auto file = ResultFile::read(path);
        ASSERT_FALSE(file) << name;
        EXPECT_EQ(file.failure().message, "\"" + path +
                                              "\" is a picture, not a recognition result. Did you mean "
                                              "\"qvcardscan scan " +
                                              path + "\"?");
    }
}

}  // namespace
