#pragma once

#include <string>
#include <string_view>

/// A phone number reduced to what is dialled.
struct PhoneDigits {
    /// ASCII digits, without an international prefix ("+", "00", "011") and without a "(0)" behind the country's code.
    /// Letters stand for the keys they are printed on, except in words before a whole number ("Tel.:") or in brackets
    /// ("(office)"); empty for a text without any digit.
    std::string digits;
    /// Whether the digits begin with the code of a country for certain.
    bool isInternational = false;
    /// What is dialled after the connection stands; empty when there is none.
    std::string extension;

    static PhoneDigits fromText(std::string_view text);

    /// Whether both reach the same telephone: equal digits, a country or trunk prefix apart, and equal extensions.
    bool isSameTelephone(const PhoneDigits& other) const;
};
