#pragma once

#include <string>
#include <string_view>

/// What the index page consists of besides cards: its head, how it looks, and the little script behind the search box.
namespace qvhost::IndexStyle {

std::string_view beforePolicy();
/// What the page may load: pictures from beside it, and this one script.
std::string policy();
std::string_view afterPolicy();
std::string tail();

}  // namespace qvhost::IndexStyle
