#pragma once

#include "Export.h"

#include <any>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace qv {

/// Fills "%@", "%d" and "%ld" of `format` with the arguments, by position; "%%" is a percent sign. The arguments are
/// put in as they are and never looked into again. A place without an argument shows "(null)"; an argument without a
/// place is left out; any other "%" stays as it is.
QV_EXPORT std::string fillFormat(std::string_view format, std::initializer_list<std::string_view> arguments);

/// How a value prints in a format: an absent one as "(null)".
inline std::string describe(std::string_view text) {
    return std::string(text);
}
/// A text prints as it is.
inline std::string describe(const std::string& text) {
    return text;
}
/// A null pointer prints as "(null)".
inline std::string describe(const char* text) {
    return text ? text : "(null)";
}
/// A number prints in decimal digits.
template <typename T>
requires std::is_integral_v<T> std::string describe(T number) {
    return std::to_string(number);
}
/// An absent value prints as "(null)".
template <typename T>
std::string describe(const std::optional<T>& value) {
    return value ? describe(*value) : "(null)";
}
/// An object prints as its own description.
template <typename T>
requires requires(const T& object) {
    object.description();
}
std::string describe(const T& object) {
    return object.description();
}
/// A null pointer prints as "(null)".
template <typename T>
std::string describe(const std::shared_ptr<T>& object) {
    return object ? describe(*object) : "(null)";
}
/// A dictionary prints as "{a = \"1\"; b = \"2\"}", in key order.
QV_EXPORT std::string describe(const std::map<std::string, std::string>& dictionary);

/// `fillFormat` over values of several types.
template <typename... Arguments>
std::string format(std::string_view format, const Arguments&... arguments) {
    return fillFormat(format, {std::string_view(describe(arguments))...});
}

}  // namespace qv
