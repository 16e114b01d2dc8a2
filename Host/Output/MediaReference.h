#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qvhost {

/// A `qv-media` element of a note: a picture, named by the hash of its bytes.
struct MediaReference {
    std::size_t position = 0;
    std::size_t length = 0;
    std::string style;
    std::string hash;

    /// All of a note, in its order. What text a note shows cannot be taken for one: its "<" is escaped.
    static std::vector<MediaReference> allIn(std::string_view note);
};

}  // namespace qvhost
