#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The text in UTF-8; nothing when the character set is not known or the bytes are none of it. An empty name stands for
/// UTF-8 or else Windows-1252, which is what 2.1's writers meant by nothing.
std::optional<std::string> textInCharacterSet(std::string_view bytes, const std::string& name);
bool isUTF8(std::string_view bytes);
