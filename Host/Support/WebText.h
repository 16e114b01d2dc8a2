#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// Text from outside, made fit for a web page.
namespace qvhost::WebText {

/// The text as content or as the value of a quoted attribute; malformed UTF-8 becomes U+FFFD, and so do control
/// characters, but for line ends and tabs.
std::string escaped(std::string_view text);

/// A relative path as an address, to be escaped no further.
std::string address(const std::filesystem::path& path);

}  // namespace qvhost::WebText
