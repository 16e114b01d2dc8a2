#include "Support/Secrets.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace {

using qvhost::ExitStatus;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
namespace Secrets = qvhost::Secrets;

constexpr const char* kUser = "QV_TEST_USER";
constexpr const char* kPassword = "QV_TEST_PASSWORD";

class SecretsTest : public testing::Test {
  protected:
    ~SecretsTest() override {
        ::unsetenv(kUser);
        ::unsetenv(kPassword);
    }
    static Secrets::Source source(std::optional<std::string> file = std::nullopt) {
        return {std::move(file), {kUser, kPassword}, "the user name and the password, a line each"};
    }
    Secrets::Source fileWith(const std::string& contents) const {
        return source(mFolder.write("secrets", contents).string());
    }

    testsupport::TemporaryFolder mFolder;
};

TEST_F(SecretsTest, ComeFromTheLinesOfAFile) {
    for (const std::string contents : {"ada\nsecret", "ada\nsecret\n", "ada\r\nsecret\r\n"}) {
        const auto read = Secrets::read(fileWith(contents));
        ASSERT_TRUE(read) << contents;
        EXPECT_THAT(read->value(), ElementsAre("ada", "secret")) << contents;
    }
    EXPECT_THAT(Secrets::read(fileWith("ada lovelace\np\xC3\xA4ss: word \n"))->value(),
                ElementsAre("ada lovelace", "p\xC3\xA4ss: word "));
}

TEST_F(SecretsTest, ComeFromTheEnvironment) {
    ::setenv(kUser, "ada", 1);
    ::setenv(kPassword, "secret", 1);
    EXPECT_THAT(Secrets::read(source())->value(), ElementsAre("ada", "secret"));
    EXPECT_THAT(Secrets::read(fileWith("bo\nother\n"))->value(), ElementsAre("bo", "other")) << "the file goes first";
}

TEST_F(SecretsTest, AreAbsentWhenNobodyGaveAny) {
    const auto read = Secrets::read(source());
    ASSERT_TRUE(read);
    EXPECT_FALSE(*read);
}

TEST_F(SecretsTest, OneOfTwoIsAMistake) {
    ::setenv(kPassword, "top-secret", 1);
    const auto read = Secrets::read(source());
    ASSERT_FALSE(read);
    EXPECT_EQ(read.failure().status, ExitStatus::WrongCall);
    EXPECT_THAT(read.failure().message, HasSubstr(std::string(kUser) + " is not set"));
    EXPECT_THAT(read.failure().message, Not(HasSubstr("top-secret")));
}

TEST_F(SecretsTest, AreRefusedWithoutBeingRepeated) {
    const struct {
        const char* name;
        std::string contents;
        const char* why;
    } rows[] = {{"empty", "", "holds 0 lines"},
                {"one line", "top-secret\n", "holds 1 line."},
                {"three lines", "top-secret\nb\nc\n", "holds 3 lines"},
                {"an empty line", "top-secret\n\n", "an empty line or control characters"},
                {"a NUL", std::string("top-secret\na\0b", 14), "control characters"},
                {"an escape", "top-secret\n\x1b[31m", "control characters"}};
    for (const auto& row : rows) {
        const auto read = Secrets::read(fileWith(row.contents));
        ASSERT_FALSE(read) << row.name;
        EXPECT_THAT(read.failure().message, HasSubstr(row.why)) << row.name;
        EXPECT_THAT(read.failure().message, HasSubstr("Put there the user name and the password")) << row.name;
        EXPECT_THAT(read.failure().message, Not(HasSubstr("top-secret"))) << row.name;
    }
    ::setenv(kUser, "", 1);
    ::setenv(kPassword, "top-secret", 1);
    EXPECT_THAT(Secrets::read(source()).failure().message, HasSubstr("QV_TEST_USER is empty"));
    EXPECT_FALSE(Secrets::read(source((mFolder / "missing").string())));
    EXPECT_FALSE(Secrets::read(fileWith(std::string(9000, 'x'))));
}

}  // namespace
