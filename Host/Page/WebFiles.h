#pragma once

#include <string_view>

namespace qvhost {

/// A file of the page's own, part of the program.
struct WebFile {
    std::string_view name;
    std::string_view type;
    std::string_view bytes;
};

/// Null when there is none of that name. The page itself has an empty one.
const WebFile* webFile(std::string_view name);

}  // namespace qvhost
