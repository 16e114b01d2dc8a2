#include "QVPlatform/Text.h"
#include "Support/NaiveText.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace {

using qv::Text::stringFromUTF8;
using qv::Text::utf16;
using qv::Text::utf8;

qv::Data bytes(std::string_view text) {
    return {text.begin(), text.end()};
}

TEST(TextConversion, KeepsWellFormedText) {
    for (const std::string& text : {std::string(), std::string("plain"), std::string("a\0b", 3),
                                    std::string("Z\xC3\xBCrich \xE4\xB8\xAD \xF0\x90\x90\x80"),
                                    std::string("\xEF\xBB\xBFmarked"), std::string("\xF4\x8F\xBF\xBF\xEE\x80\x80")}) {
        EXPECT_EQ(utf8(utf16(text)), text);
    }
    EXPECT_EQ(utf16("\xF0\x90\x90\x80"), u"\U00010400");
    EXPECT_EQ(utf16("eight by\xC3\xA9"), u"eight by\u00E9");
}

struct Malformed {
    const char* name;
    std::string bytes;
    std::u16string converted;
};

const Malformed kMalformed[] = {
    {"lone continuation", "a\x80z", u"a\uFFFDz"},
    {"overlong slash", "\xC0\xAF", u"\uFFFD\uFFFD"},
    {"overlong three", "\xE0\x80\x80", u"\uFFFD\uFFFD\uFFFD"},
    {"surrogate", "\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},
    {"past the last character", "\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
    {"no UTF-8 byte", "\xFF", u"\uFFFD"},
    {"cut tail", "ab\xE4\xB8", u"ab\uFFFD"},
    {"cut in the middle", "\xF0\x90\x90z", u"\uFFFDz"},
};

TEST(TextConversion, ReplacesMalformedBytes) {
    for (const auto& row : kMalformed)
        EXPECT_EQ(utf16(row.bytes), row.converted) << row.name;
}

TEST(TextConversion, ReplacesUnpairedSurrogates) {
    EXPECT_EQ(utf8(std::u16string{u'a', char16_t{0xD800}, u'b'}),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(utf8(std::u16string{char16_t{0xDC00}, char16_t{0xD800}}), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(TextConversion, StrictlyRefusesMalformedBytes) {
    for (const auto& row : kMalformed) {
        EXPECT_FALSE(stringFromUTF8(bytes(row.bytes))) << row.name;
        EXPECT_FALSE(stringFromUTF8(bytes("a long enough beginning " + row.bytes))) << row.name;
    }
}

TEST(TextConversion, StrictlyTakesEverythingElse) {
    EXPECT_EQ(stringFromUTF8({}), "");
    EXPECT_EQ(stringFromUTF8(bytes("\xEF\xBB\xBFx")), "\xEF\xBB\xBFx") << "a byte order mark stays";
    EXPECT_EQ(stringFromUTF8(bytes("Gr\xC3\xBC\xC3\x9F"
                                   "e")),
              "Gr\xC3\xBC\xC3\x9F"
              "e");
    EXPECT_EQ(stringFromUTF8(bytes(std::string_view("a\0b", 3))), std::string("a\0b", 3));
    EXPECT_EQ(stringFromUTF8(bytes("\xEF\xBF\xBF\xF4\x8F\xBF\xBF")), "\xEF\xBF\xBF\xF4\x8F\xBF\xBF");
}

class TextFile : public testing::Test {
  protected:
    TextFile() { std::filesystem::create_directories(mFolder); }
    ~TextFile() override { std::filesystem::remove_all(mFolder); }

    std::string write(const std::string& content) const {
        const auto path = mFolder / "file.txt";
        std::ofstream(path, std::ios::binary) << content;
        return path.string();
    }

    std::filesystem::path mFolder = std::filesystem::path(testing::TempDir()) / "qv-text-test";
};

TEST_F(TextFile, IsReadWhole) {
    const std::string content = "first\r\nsecond \xE2\x82\xAC" + std::string(1, '\0') + "end";
    EXPECT_EQ(qv::Text::stringWithContentsOfFile(write(content)), content);
    EXPECT_EQ(qv::Text::stringWithContentsOfFile(write("")), "");
}

TEST_F(TextFile, IsAbsentWhenThereIsNoText) {
    EXPECT_FALSE(qv::Text::stringWithContentsOfFile(write("\xFF\xFE")));
    EXPECT_FALSE(qv::Text::stringWithContentsOfFile((mFolder / "missing.txt").string()));
    EXPECT_FALSE(qv::Text::stringWithContentsOfFile(mFolder.string())) << "a folder";
    EXPECT_FALSE(qv::Text::stringWithContentsOfFile("/dev/zero")) << "never ends";
    EXPECT_FALSE(qv::Text::stringWithContentsOfFile(""));
}

}  // namespace
