// QR codes in a picture. The first byte says how it is looked at and what the others are: a picture as it is, or what a
// code says, drawn as a code, with modules changed afterwards.

#include "Codes/CodeReader.h"
#include "Codes/ContactCode.h"
#include "Support/CodeDrawing.h"
#include "Support/Input.h"
#include "Support/Require.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

using fuzzing::require;
using namespace qv::recognition;

namespace {

constexpr int kQuietZone = 4;
constexpr std::size_t kMostCodes = 4;

/// Bits of the first byte.
constexpr unsigned kTurn = 3;
constexpr unsigned kLightOnDark = 4;
constexpr unsigned kPicture = 8;
constexpr unsigned kText = 16;
constexpr unsigned kSlanted = 32;
constexpr unsigned kSmall = 64;

/// Rows of pixels; the first byte is their width.
cv::Mat pictureOf(const std::vector<std::uint8_t>& bytes) {
    const int width = std::max(1, int{bytes.front()});
    const int height = static_cast<int>(bytes.size() - 1) / width;
    if (height == 0) return {1, 1, CV_8U, cv::Scalar(255)};
    return cv::Mat(height, width, CV_8U, const_cast<std::uint8_t*>(bytes.data() + 1)).clone();
}

/// A text as a code says it: four bits for "bytes", eight for their number, then they, then four for the end.
std::vector<std::uint8_t> segmentOf(const std::string& text) {
    std::vector<std::uint8_t> bytes{static_cast<std::uint8_t>(0x40 | text.size() >> 4),
                                    static_cast<std::uint8_t>(text.size() << 4)};
    for (const char character : text) {
        const auto byte = static_cast<std::uint8_t>(character);
        bytes.back() |= static_cast<std::uint8_t>(byte >> 4);
        bytes.push_back(static_cast<std::uint8_t>(byte << 4));
    }
    return bytes;
}

cv::Mat withQuietZone(const cv::Mat& modules, int scale) {
    cv::Mat large;
    cv::resize(modules, large, {}, scale, scale, cv::INTER_NEAREST);
    cv::Mat card;
    const int edge = kQuietZone * scale;
    cv::copyMakeBorder(large, card, edge, edge, edge, edge, cv::BORDER_CONSTANT, cv::Scalar(255));
    return card;
}

/// Pairs of bytes are places of modules that turn from dark to light or back.
void damage(cv::Mat& modules, const std::uint8_t* bytes, std::size_t count) {
    for (std::size_t i = 0; i + 1 < count; i += 2) {
        std::uint8_t& module = modules.at<std::uint8_t>(bytes[i] % modules.rows, bytes[i + 1] % modules.cols);
        module = static_cast<std::uint8_t>(~module);
    }
}

cv::Mat slanted(const cv::Mat& picture) {
    const auto width = static_cast<float>(picture.cols);
    const auto height = static_cast<float>(picture.rows);
    const std::vector<cv::Point2f> from{{0, 0}, {width, 0}, {width, height}, {0, height}};
    const std::vector<cv::Point2f> to{{width * 0.1F, 0}, {width, height * 0.08F}, {width * 0.9F, height}, {0, height}};
    cv::Mat result;
    cv::warpPerspective(picture, result, cv::getPerspectiveTransform(from, to), picture.size(), cv::INTER_LINEAR,
                        cv::BORDER_CONSTANT, cv::Scalar(255));
    return result;
}

cv::Mat seen(cv::Mat picture, unsigned habits) {
    if ((habits & kSlanted) != 0) picture = slanted(picture);
    for (unsigned i = 0; i < (habits & kTurn); ++i)
        cv::rotate(cv::Mat(picture), picture, cv::ROTATE_90_CLOCKWISE);
    if ((habits & kLightOnDark) != 0) picture = 255 - picture;
    return picture;
}

std::vector<Code> checkedCodes(const cv::Mat& picture) {
    std::vector<Code> codes = readCodes(picture);
    require(codes.size() <= kMostCodes, "there are at most four codes");
    for (const Code& code : codes) {
        require(!code.text.empty() && fuzzing::isUTF8(code.text), "what a code says is text");
        for (const cv::Point2f corner : code.corners)
            require(std::isfinite(corner.x) && std::isfinite(corner.y), "a code lies somewhere");
        require(code.box().w >= 0 && code.box().h >= 0, "a code has a size");
        (void)contactIn(code.text);
    }
    cv::Mat colour;
    cv::cvtColor(picture, colour, cv::COLOR_GRAY2BGR);
    eraseCodes(colour, codes);
    return codes;
}

void checkCode(unsigned habits, const std::vector<std::uint8_t>& bytes) {
    const int version = 1 + bytes.front() % 5;
    const int mask = bytes.front() / 32;
    const std::size_t room = fuzzing::roomOfCode(version);
    const bool isText = (habits & kText) != 0;
    const std::size_t count = std::min(bytes.size() - 1, room - (isText ? 2 : 0));
    const std::string said = fuzzing::textOf(bytes.data() + 1, count);
    cv::Mat modules = fuzzing::drawnCode(
        version, mask, isText ? segmentOf(said) : std::vector<std::uint8_t>(said.begin(), said.end()));
    damage(modules, bytes.data() + 1 + count, bytes.size() - 1 - count);
    const cv::Mat card = seen(withQuietZone(modules, (habits & kSmall) != 0 ? 2 : 4), habits);
    const std::vector<Code> codes = checkedCodes(card);
    const bool isPlain = isText && fuzzing::isUTF8(said) && bytes.size() - 1 == count;
    if (isPlain && !codes.empty()) require(codes.front().text == said, "a code says what was written into it");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    if (count < 2) return 0;
    const unsigned habits = bytes[0];
    const std::vector<std::uint8_t> rest(bytes + 1, bytes + count);
    if ((habits & kPicture) != 0)
        (void)checkedCodes(seen(pictureOf(rest), habits));
    else
        checkCode(habits, rest);
    return 0;
}
