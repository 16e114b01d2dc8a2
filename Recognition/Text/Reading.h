#pragma once

#include "Text/Engine.h"

#include <opencv2/core.hpp>

#include <vector>

namespace qv::recognition {

/// The words of a picture and the turn they were read in.
struct Reading {
    int orient = 0;           ///< degrees clockwise that the picture has to be turned for these words to stand upright
    std::vector<Word> words;  ///< boxes in the turned picture
};

/// `picture` turned clockwise by 0, 90, 180 or 270 degrees.
cv::Mat turned(const cv::Mat& picture, int degrees);

/// Whether so much was read, and so surely, that the picture has to stand upright.
bool isPlain(const std::vector<Word>& words);

/// Whether these words cannot be a card's: more plain ones than a card holds, or a crowd of scraps and nothing plain
/// among them, as the engine makes of a texture or of a page that lies on its side.
bool isNoCard(const std::vector<Word>& words);

/// Words of lines that run from top to bottom, as if their picture, `width` wide, had been turned by 270 degrees: the
/// lines lie level then, the first at the top.
std::vector<Word> laidLevel(std::vector<Word> words, int width);

/// Reads a grey picture as it stands and, unless that gives plain text or tells that this is no card, in the other
/// three turns as well; the turn that gave most plain text wins. Cheaper and surer than asking for the orientation
/// first: most pictures stand upright.
Reading readUpright(Engine& engine, const cv::Mat& grey, Deadline deadline);

}  // namespace qv::recognition
