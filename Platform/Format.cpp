#include "QVPlatform/Format.h"

#include <array>
#include <cstddef>

namespace qv {

namespace {

constexpr std::string_view kAbsent = "(null)";
constexpr std::array<std::string_view, 3> kPlaces = {"%@", "%d", "%ld"};

/// The length of the place for an argument that `text` begins with; 0 when it begins with none.
std::size_t placeLength(std::string_view text) {
    for (const std::string_view place : kPlaces) {
        if (text.substr(0, place.size()) == place) return place.size();
    }
    return 0;
}

}  // namespace

std::string fillFormat(std::string_view format, std::initializer_list<std::string_view> arguments) {
    std::size_t length = format.size();
    for (const std::string_view argument : arguments)
        length += argument.size();
    std::string filled;
    filled.reserve(length);
    const auto* argument = arguments.begin();
    while (!format.empty()) {
        const std::size_t percent = format.find('%');
        filled += format.substr(0, percent);
        if (percent == std::string_view::npos) break;
        format.remove_prefix(percent);
        if (const std::size_t place = placeLength(format)) {
            filled += argument == arguments.end() ? kAbsent : *argument++;
            format.remove_prefix(place);
        } else {
            filled += '%';
            format.remove_prefix(format.substr(0, 2) == "%%" ? 2 : 1);
        }
    }
    return filled;
}

std::string describe(const std::map<std::string, std::string>& dictionary) {
    std::string text = "{";
    for (const auto& [key, value] : dictionary) {
        if (text.size() > 1) text += "; ";
        text += key;
        text += " = \"";
        text += value;
        text += '"';
    }
    return text + "}";
}

}  // namespace qv
