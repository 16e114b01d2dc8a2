#pragma once

#include <string_view>

namespace qv::recognition {

/// Whether a given token is the expected one; takes as long for one that is nearly right as for one that is not.
inline bool isSameToken(std::string_view given, std::string_view expected) {
    unsigned difference = given.size() == expected.size() ? 0U : 1U;
    for (std::size_t i = 0; i < given.size(); ++i) {
        const char other = expected.empty() ? '\0' : expected[i % expected.size()];
        difference |= static_cast<unsigned>(static_cast<unsigned char>(given[i]) ^ static_cast<unsigned char>(other));
    }
    return difference == 0;
}

}  // namespace qv::recognition
