#include "QVPlatform/MD5.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

qv::Data bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

struct MD5Case {
    const char* name;
    std::string text;
    const char* digest;
};

class MD5 : public testing::TestWithParam<MD5Case> {};

TEST_P(MD5, IsTheDigestInLowerCaseHex) {
    EXPECT_EQ(qv::lowerHexMD5(bytesOf(GetParam().text)), GetParam().digest);
}

// The test suite of RFC 1321, A.5.
INSTANTIATE_TEST_SUITE_P(
    Texts, MD5,
    testing::Values(MD5Case{"Empty", "", "d41d8cd98f00b204e9800998ecf8427e"},
                    MD5Case{"OneByte", "a", "0cc175b9c0f1b6a831c399e269772661"},
                    MD5Case{"Abc", "abc", "900150983cd24fb0d6963f7d28e17f72"},
                    MD5Case{"Words", "message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
                    MD5Case{"Alphabet", "abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
                    MD5Case{"TwoBlocks",
                            "12345678901234567890123456789012345678901234567890123456789012345678901234567890",
                            "57edf4a22be3c955ac49da2e2107b67a"},
                    MD5Case{"ZeroBytes", std::string(3, '\0'), "693e9af84d3dfcc71e640e005bdc5e2e"}),
    [](const auto& row) { return row.param.name; });

}  // namespace
