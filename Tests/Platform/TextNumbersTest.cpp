#include "QVPlatform/Text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>

namespace {

using qv::Text::floatValue;
using qv::Text::integerValue;

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
constexpr float kLargest = std::numeric_limits<float>::max();

struct IntegerRow {
    const char* text;
    std::int64_t value;
};

const IntegerRow kIntegers[] = {
    {"", 0},
    {"87", 87},
    {"+87", 87},
    {"-87", -87},
    {" \t\r\n\v\f 12", 12},
    {"\u00A0\u3000\u2028"
     "12",
     12},
    {"12 34", 12},
    {"12px", 12},
    {"0.87", 0},
    {"1e3", 1},
    {"0x10", 0},
    {"007", 7},
    {".5", 0},
    {"abc", 0},
    {"-", 0},
    {"- 5", 0},
    {"+-5", 0},
    {"--5", 0},
    {"\u0663", 0},
    {"\uFF15", 0},
    {"9223372036854775807", kMax},
    {"9223372036854775808", kMax},
    {"-9223372036854775807", -kMax},
    {"-9223372036854775808", kMin},
    {"-9223372036854775809", kMin},
    {"18446744073709551615", kMax},
    {"18446744073709551616", kMax},
    {"99999999999999999999999999999999", kMax},
    {"-99999999999999999999999999999999", kMin},
    {"00000000000000000000000000000000042", 42},
};

TEST(TextIntegerValue, Table) {
    for (const auto& row : kIntegers)
        EXPECT_EQ(integerValue(row.text), row.value) << '"' << row.text << '"';
}

struct FloatRow {
    const char* text;
    float value;
};

const FloatRow kFloats[] = {
    {"", 0},
    {"120", 120},
    {"-120.5", -120.5F},
    {"+.5", .5F},
    {"-.5e1", -5},
    {"5.", 5},
    {"5.e1", 50},
    {"0.1", 0.1F},
    {"1e3", 1000},
    {"1E+3", 1000},
    {"1e-3", 0.001F},
    {"1e", 1},
    {"1e+", 1},
    {"1.5.5", 1.5F},
    {"12px", 12},
    {" \t12", 12},
    {"\u00A0"
     "12",
     12},
    {"1,5", 1},
    {"0x1p3", 0},
    {"0x10", 0},
    {"inf", 0},
    {"-inf", 0},
    {"infinity", 0},
    {"nan", 0},
    {"NaN(1)", 0},
    {".", 0},
    {"e5", 0},
    {"-", 0},
    {"--1", 0},
    {"+-1", 0},
    {"16777217", 16777216},
    {"3.4028235e38", kLargest},
    {"3.5e38", kLargest},
    {"-3.5e38", -kLargest},
    {"1e400", kLargest},
    {"0.0001e400", kLargest},
    {"1e99999999999999999999", kLargest},
    {"1e-400", 0},
    {"-1e-400", 0},
    {"1e-99999999999999999999", 0},
    {"1000e-400", 0},
    {"0e99999999999999999999", 0},
    {"0.000e99999999999999999999", 0},
};

TEST(TextFloatValue, Table) {
    for (const auto& row : kFloats)
        EXPECT_EQ(floatValue(row.text), row.value) << '"' << row.text << '"';
}

TEST(TextFloatValue, TakesLongNumbers) {
    EXPECT_EQ(floatValue(std::string(100'000, '9')), kLargest);
    EXPECT_EQ(floatValue("0." + std::string(100'000, '0') + "1"), 0.0F);
    EXPECT_EQ(floatValue("0." + std::string(50, '0') + "1e51"), 1.0F);
    EXPECT_EQ(floatValue("1" + std::string(60, '0') + "e-60"), 1.0F);
}

TEST(TextNumbers, StopAtTheEndOfTheView) {
    EXPECT_EQ(integerValue(std::string_view("1234").substr(0, 2)), 12);
    EXPECT_EQ(floatValue(std::string_view("1.25").substr(0, 3)), 1.2F);
    EXPECT_EQ(integerValue(std::string_view("1\0002", 3)), 1);
    EXPECT_EQ(integerValue("\xFF"
                           "1"),
              0)
        << "malformed";
    EXPECT_EQ(integerValue("\xC2"), 0) << "cut";
}

TEST(TextNumbers, DoNotAskTheLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"de_DE.UTF-8", "fr_FR.UTF-8", "C"}) {
        std::setlocale(LC_ALL, locale);
        EXPECT_EQ(floatValue("1.5"), 1.5F);
    }
    std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
