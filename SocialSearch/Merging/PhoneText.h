#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Whether a unit is an ASCII digit.
bool isPhoneDigit(char16_t unit);

/// The key that a digit or a small letter is printed on.
std::optional<char> phoneKeyOf(char16_t unit);

/// A phone number as it is written, ready to be read: in small letters, with ASCII digits and plus signs, without what
/// stands around it and is not dialled.
std::u16string readablePhoneText(std::string_view text);
