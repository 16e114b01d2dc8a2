#include "Output/ErrorText.h"
#include "QVCardScan/QVCardProcessingError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace ErrorText = qvhost::ErrorText;
using testing::AllOf;
using testing::HasSubstr;

qv::Error processingError(long code) {
    return {std::string(kQVCardProcessingErrorDomain), code, {}};
}

qv::Error withCause(qv::Error error, const qv::Error& cause) {
    error.userInfo[std::string(kQVCardProcessingUnderlyingErrorKey)] = cause;
    return error;
}

qv::Error explained(const std::string& text) {
    return {"Transport", 7, {{std::string(qv::kErrorDescriptionKey), text}}};
}

TEST(ErrorText, FindsTheCauseAndItsExplanation) {
    EXPECT_FALSE(ErrorText::underlying(processingError(3)));
    const auto cause = ErrorText::underlying(withCause(processingError(2), explained("refused")));
    ASSERT_TRUE(cause);
    EXPECT_EQ(cause->code, 7);
    EXPECT_EQ(ErrorText::explanation(*cause), "refused");
    EXPECT_EQ(ErrorText::explanation(processingError(2)), std::nullopt);
}

TEST(ErrorText, ToleratesOddUserInfo) {
    qv::Error error = processingError(2);
    error.userInfo[std::string(kQVCardProcessingUnderlyingErrorKey)] = 5;
    EXPECT_FALSE(ErrorText::underlying(error));
    error.userInfo[std::string(qv::kErrorDescriptionKey)] = 5;
    EXPECT_EQ(ErrorText::explanation(error), std::nullopt);
}

TEST(ErrorText, SaysWhatWhereAndWhatToDo) {
    EXPECT_THAT(ErrorText::message(processingError(1), "S"), HasSubstr("--server"));
    EXPECT_THAT(ErrorText::message(withCause(processingError(2), explained("refused")), "S"),
                AllOf(HasSubstr("The exchange with S failed: refused (Transport 7)."), HasSubstr("Check")));
    EXPECT_THAT(ErrorText::message(processingError(2), "S"), HasSubstr("The exchange with S failed."));
    EXPECT_THAT(ErrorText::message(processingError(3), "S"), AllOf(HasSubstr("answer of S"), HasSubstr("token")));
    EXPECT_THAT(ErrorText::message(processingError(99), "S"), HasSubstr("kQVCardProcessingErrorDomain 99"));
    EXPECT_THAT(ErrorText::message({"Other", 1, {}}, "S"), HasSubstr("Other 1"));
}

}  // namespace
