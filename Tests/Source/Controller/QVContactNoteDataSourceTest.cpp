#include "QVCardScan/QVContactNoteDataSource.h"
#include "QVCardScan/QVVeltoContact.h"

#include <gtest/gtest.h>

namespace {

/// A host that keeps contacts, but does not match them.
class Plain : public QVContactNoteDataSource {};

TEST(QVContactNoteDataSource, MatchesNobodyUnlessAHostSaysSo) {
    Plain host;
    EXPECT_FALSE(host.implementsContactMatchingFullName());
    EXPECT_EQ(host.contactMatchingFullName("Ada Example", "Ada", "Example", "ada@example.com", "555-0100"), nullptr);
}

}  // namespace
