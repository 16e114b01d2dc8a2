#include "QVPlatform/Base64.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>

namespace {

qv::Data bytes(std::string_view text) {
    return {text.begin(), text.end()};
}

/// Every byte once.
qv::Data allBytes() {
    qv::Data all(256);
    std::iota(all.begin(), all.end(), std::uint8_t{0});
    return all;
}

constexpr const char* kAllBytes =
    "AAECAwQFBgcICQoLDA0ODxAREhMUFRYXGBkaGxwdHh8gISIjJCUmJygpKissLS4vMDEyMzQ1Njc4OTo7PD0+"
    "P0BBQkNERUZHSElKS0xNTk9QUVJTVFVW"
    "V1hZWltcXV5fYGFiY2RlZmdoaWprbG1ub3BxcnN0dXZ3eHl6e3x9fn+"
    "AgYKDhIWGh4iJiouMjY6PkJGSk5SVlpeYmZqbnJ2en6ChoqOkpaanqKmqq6yt"
    "rq+wsbKztLW2t7i5uru8vb6/wMHCw8TFxsfIycrLzM3Oz9DR0tPU1dbX2Nna29zd3t/g4eLj5OXm5+jp6uvs7e7v8PHy8/T19vf4+fr7/P3+/w==";

struct Pair {
    const char* plain;
    const char* encoded;
};

// RFC 4648, section 10; then what section 9 of it (and RFC 3548) shows bit by bit.
const Pair kStandard[] = {
    {"", ""},
    {"f", "Zg=="},
    {"fo", "Zm8="},
    {"foo", "Zm9v"},
    {"foob", "Zm9vYg=="},
    {"fooba", "Zm9vYmE="},
    {"foobar", "Zm9vYmFy"},
    {"\x14\xFB\x9C\x03\xD9\x7E", "FPucA9l+"},
    {"\x14\xFB\x9C\x03\xD9", "FPucA9k="},
    {"\x14\xFB\x9C\x03", "FPucAw=="},
};

TEST(Base64, MatchesTheStandardsExamplesBothWays) {
    for (const Pair& pair : kStandard) {
        EXPECT_EQ(qv::base64(bytes(pair.plain)), pair.encoded);
        EXPECT_EQ(qv::dataFromBase64(pair.encoded), bytes(pair.plain)) << pair.encoded;
    }
}

TEST(Base64, KnowsEveryByteAndDigit) {
    EXPECT_EQ(qv::base64(allBytes()), kAllBytes);
    EXPECT_EQ(qv::dataFromBase64(kAllBytes), allBytes());
}

TEST(Base64, EveryLengthComesBack) {
    for (std::size_t length = 0; length < 70; ++length) {
        qv::Data data = allBytes();
        data.resize(length);
        const std::string encoded = qv::base64(data);
        EXPECT_EQ(encoded.size(), (length + 2) / 3 * 4);
        EXPECT_EQ(qv::dataFromBase64(encoded), data) << length;
    }
}

TEST(Base64, ReadsWhatPeopleWrite) {
    const struct {
        const char* row;
        const char* text;
        const char* plain;
    } rows[] = {
        {"folded", "Zm9v\r\n YmFy\n", "foobar"}, {"tab", "Zm9v\tYmFy", "foobar"},
        {"no padding, one", "Zm9vYmE", "fooba"}, {"no padding, two", "Zm9vYg", "foob"},
        {"half the padding", "Zm9vYg=", "foob"}, {"padding apart", "Zm9vYg= \r\n=", "foob"},
        {"a digit too many", "Zm9vY", "foo"},    {"bits left over", "Zh==", "f"},
        {"only blanks", " \r\n\t", ""},          {"only padding", "====", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(qv::dataFromBase64(row.text), bytes(row.plain)) << row.row;
}

TEST(Base64, RefusesEverythingElse) {
    const struct {
        const char* row;
        std::string_view text;
    } rows[] = {
        {"other alphabet", "-_8="},         {"a dot", "Zm9v."},           {"digits behind padding", "Zg==Zg=="},
        {"padding in the middle", "Zm=9v"}, {"no ASCII", "Zm9v\xC3\xA4"}, {"a NUL", std::string_view("Zm9v\0", 5)},
        {"a form feed", "Zm9v\fYmFy"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(qv::dataFromBase64(row.text), std::nullopt) << row.row;
}

}  // namespace
