#include "Text/Reading.h"

#include "Text/WordMerge.h"

#include <opencv2/imgproc.hpp>

#include <array>
#include <utility>

namespace qv::recognition {
namespace {

constexpr int kPlainEnough = 24;  // letters; text that lies on its side or its head gives fewer by chance
constexpr float kShareEnough = 0.5F;

}  // namespace

bool isPlain(const std::vector<Word>& words) {
    std::size_t sure = 0;
    for (const auto& word : words)
        sure += word.confidence >= 60 ? 1U : 0U;
    return plainLetters(words) >= kPlainEnough &&
           static_cast<float>(sure) >= kShareEnough * static_cast<float>(words.size());
}

std::vector<Word> laidLevel(std::vector<Word> words, int width) {
    for (auto& word : words) {
        const Box box = word.box;
        word.box = {box.y, static_cast<float>(width) - box.right(), box.h, box.w};
    }
    return words;
}

cv::Mat turned(const cv::Mat& picture, int degrees) {
    cv::Mat result;
    switch (degrees) {
        case 90:
            cv::rotate(picture, result, cv::ROTATE_90_CLOCKWISE);
            return result;
        case 180:
            cv::rotate(picture, result, cv::ROTATE_180);
            return result;
        case 270:
            cv::rotate(picture, result, cv::ROTATE_90_COUNTERCLOCKWISE);
            return result;
        default:
            return picture;
    }
}

Reading readUpright(Engine& engine, const cv::Mat& grey, Deadline deadline) {
    Reading best{0, engine.read(grey, PageMode::Sparse, deadline)};
    if (isPlain(best.words)) return best;
    for (const int degrees : std::array<int, 3>{90, 270, 180}) {
        if (deadline.passed()) break;
        Reading reading{degrees, engine.read(turned(grey, degrees), PageMode::Sparse, deadline)};
        if (plainLetters(reading.words) > plainLetters(best.words)) best = std::move(reading);
        if (isPlain(best.words)) break;
    }
    return best;
}

}  // namespace qv::recognition
