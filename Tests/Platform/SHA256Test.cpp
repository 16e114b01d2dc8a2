#include "QVPlatform/SHA256.h"

#include <gtest/gtest.h>

namespace {

// The first two are examples of FIPS 180-2, B.1 and B.2.
TEST(SHA256, IsTheDigestInLowerCaseHex) {
    EXPECT_EQ(qv::lowerHexSHA256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(qv::lowerHexSHA256("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(qv::lowerHexSHA256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
}

}  // namespace
