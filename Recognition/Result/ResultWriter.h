#pragma once

#include "Picture/Box.h"

#include <string>
#include <string_view>
#include <vector>

namespace qv::recognition {

/// One item of an answer: a type's name as the format spells it, its text, its place in the picture as it was sent, and
/// the estimated chance, in per cent, that it is right.
struct ResultItem {
    std::string_view type;
    std::string text;
    Box box;
    int weight = 1;
};

/// What a card said, ready to be written.
struct Result {
    std::string language;
    int width = 0;  ///< of the picture as it was sent, in pixels
    int height = 0;
    int orient = 0;  ///< degrees clockwise that the picture has to be turned to stand upright: 0, 90, 180, 270
    std::vector<ResultItem> items;
};

/// The answer as compact XML. There is no white space between elements, because a reader of this format takes all text
/// between one item's start and the next one's for the item's own. Characters that XML does not allow are left out,
/// control characters become spaces, weights are held between 1 and 100, and boxes inside the picture.
std::string writeResult(const Result& result);

}  // namespace qv::recognition
