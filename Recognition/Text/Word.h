#pragma once

#include "Picture/Box.h"

#include <string>
#include <vector>

namespace qv::recognition {

/// One word as an engine read it: UTF-8 text without white space, where it stands, and how sure the engine is (0–100).
struct Word {
    std::string text;
    Box box;
    float confidence = 0;
    std::vector<std::string> others = {};  ///< what other readings of the same place made of it
};

}  // namespace qv::recognition
