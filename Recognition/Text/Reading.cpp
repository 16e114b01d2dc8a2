#include "Text/Reading.h"

#include "Text/WordMerge.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace qv::recognition {
namespace {

constexpr int kPlainEnough = 24;  // letters; text that lies on its side or its head gives fewer by chance
constexpr float kShareEnough = 0.5F;
constexpr float kSure = 60;
constexpr std::size_t kMostOnACard = 200;  // words; pages of books have 400, cards that were measured at most 45

std::size_t sureWords(const std::vector<Word>& words) {
    return static_cast<std::size_t>(
        std::count_if(words.begin(), words.end(), [](const Word& word) { return word.confidence >= kSure; }));
}

}  // namespace

bool isPlain(const std::vector<Word>& words) {
    return plainLetters(words) >= kPlainEnough &&
           static_cast<float>(sureWords(words)) >= kShareEnough * static_cast<float>(words.size());
}

bool isNoCard(const std::vector<Word>& words) {
    if (words.size() <= kMostOnACard) return false;
    return sureWords(words) > kMostOnACard || plainLetters(words) < kPlainEnough;
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
    if (isPlain(best.words) || isNoCard(best.words)) return best;
    for (const int degrees : std::array<int, 3>{90, 270, 180}) {
        if (deadline.passed()) break;
        Reading reading{degrees, engine.read(turned(grey, degrees), PageMode::Sparse, deadline)};
        if (plainLetters(reading.words) > plainLetters(best.words)) best = std::move(reading);
        if (isPlain(best.words)) break;
    }
    return best;
}

}  // namespace qv::recognition
