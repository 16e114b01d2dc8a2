#include "QVPlatform/HTTPClient.h"
#include "QVPlatform/MD5.h"
#include "Support/HTTPRequests.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

/// What a thread that is still at work then would find.
void expectDigests() {
    if (qv::lowerHexMD5({}) != "d41d8cd98f00b204e9800998ecf8427e") std::_Exit(1);
}

/// Looks after everything that the work makes the libraries do at the end: what is registered first runs last.
void endAfter(void (*work)()) {
    if (std::atexit(expectDigests) != 0) std::_Exit(2);
    work();
    std::exit(0);
}

void makeDigest() {
    static_cast<void>(qv::lowerHexMD5({}));
}

void askServer() {
    static_cast<void>(testsupport::send(testsupport::requestTo("https://127.0.0.1:1/")));
}

class CryptoLibrary : public testing::Test {
  protected:
    // The process that ends must be one in which nobody has used the library yet.
    CryptoLibrary() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(CryptoLibrary, IsThereForThreadsThatAreAtWorkWhenTheProcessEndsAfterADigest) {
    EXPECT_EXIT(endAfter(makeDigest), testing::ExitedWithCode(0), "");
}

TEST_F(CryptoLibrary, IsThereForThreadsThatAreAtWorkWhenTheProcessEndsAfterAnExchange) {
    EXPECT_EXIT(endAfter(askServer), testing::ExitedWithCode(0), "");
}

}  // namespace
