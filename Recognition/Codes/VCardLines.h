#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qv::recognition {

/// One property of a vCard: its name and the words of its parameters in lower case, its value decoded to UTF-8 but with
/// its backslashes.
struct VCardProperty {
    std::string name;
    std::vector<std::string> types;  ///< "cell", "work": values of TYPE, and parameters without a name
    std::string value;

    bool has(std::string_view type) const;
};

/// The properties of the first vCard in a text, groups ("item1.") dropped, folded lines joined. Bounded in number.
std::vector<VCardProperty> vCardProperties(std::string_view text);

/// The parts of a value at semicolons, each without its backslashes.
std::vector<std::string> vCardParts(std::string_view value);
/// A value that is one text.
std::string vCardText(std::string_view value);

}  // namespace qv::recognition
