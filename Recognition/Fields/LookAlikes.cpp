#include "Fields/LookAlikes.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace qv::recognition {
namespace {

bool looksLike(char a, char b) {
    static constexpr std::array<std::string_view, 9> groups = {"0oOQD", "1lIi|!jt", "5sS", "8B", "2zZ",
                                                               "6bG",   "9gq",      "uv",  "ceo"};
    return std::any_of(groups.begin(), groups.end(), [a, b](std::string_view group) {
        return group.find(a) != std::string_view::npos && group.find(b) != std::string_view::npos;
    });
}

}  // namespace

bool areLookAlikes(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    int different = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] == b[i]) continue;
        if (!looksLike(a[i], b[i]) || ++different > 2) return false;
    }
    return different > 0;
}

}  // namespace qv::recognition
