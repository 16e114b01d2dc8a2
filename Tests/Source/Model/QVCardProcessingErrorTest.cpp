#include "QVCardScan/QVCardProcessingError.h"

#include <gtest/gtest.h>

namespace {

TEST(QVCardProcessingError, DomainAndKeyAreTheirOwnNames) {
    EXPECT_EQ(kQVCardProcessingErrorDomain, "kQVCardProcessingErrorDomain");
    EXPECT_EQ(kQVCardProcessingUnderlyingErrorKey, "kQVCardProcessingUnderlyingErrorKey");
}

TEST(QVCardProcessingError, CodesAreThePublishedOnes) {
    EXPECT_EQ(QVCardProcessingErrorNoServerURL, 1);
    EXPECT_EQ(QVCardProcessingErrorConnectionFailed, 2);
    EXPECT_EQ(QVCardProcessingErrorUnreadableResult, 3);
    EXPECT_EQ(QVCardProcessingErrorParseFailed, 4);
}

}  // namespace
