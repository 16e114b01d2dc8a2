#include "Recognition/DrawnCard.h"
#include "Text/Engine.h"
#include "Text/Languages.h"

#include <gtest/gtest.h>

namespace qv::recognition {
namespace {

cv::Mat page(int lines) {
    cv::Mat picture(21 * lines + 20, 1000, CV_8UC1, cv::Scalar(255));
    for (int i = 0; i < lines; ++i) {
        cv::putText(picture, "person" + std::to_string(i) + "@example.com  and some words more on this line",
                    {20, 20 + 21 * i}, cv::FONT_HERSHEY_SIMPLEX, 0.5, cv::Scalar(0), 1, cv::LINE_AA);
    }
    return picture;
}

class EngineTest : public testing::Test {
  protected:
    void SetUp() override {
        mEngine = Engine::open(installedModels(), "eng");
        ASSERT_TRUE(mEngine) << "the English language model is not installed";
    }
    std::unique_ptr<Engine> mEngine;
};

// How far a pass comes in a given time is nobody's to say: ever longer times must meet one that ends inside it.
TEST_F(EngineTest, ADeadlineInsideAPassLeavesWhatWasRead) {
    const cv::Mat picture = page(25);
    const std::size_t all = mEngine->read(picture, PageMode::Sparse, Deadline::never()).size();
    ASSERT_GT(all, 100U);
    int partial = 0;
    for (double limit = 20; partial == 0 && limit < 60000; limit *= 1.3) {
        const auto time = std::chrono::milliseconds(static_cast<int>(limit));
        const auto words = mEngine->read(picture, PageMode::Sparse, Deadline::in(time));
        partial += !words.empty() && words.size() < all ? 1 : 0;
        for (const auto& word : words)
            EXPECT_FALSE(word.text.empty());
    }
    EXPECT_EQ(partial, 1);
    EXPECT_EQ(mEngine->read(picture, PageMode::Sparse, Deadline::never()).size(), all);
}

TEST_F(EngineTest, APassedDeadlineReadsNothing) {
    EXPECT_TRUE(mEngine->read(page(2), PageMode::Sparse, Deadline::in(std::chrono::milliseconds(0))).empty());
    EXPECT_FALSE(mEngine->read(page(2), PageMode::Sparse, Deadline::never()).empty());
}

// Thousands of pieces of text, none of which is any.
TEST_F(EngineTest, NoiseEnds) {
    cv::Mat noise(1600, 1600, CV_8UC1, cv::Scalar(255));
    cv::RNG random(5);
    for (int i = 0; i < 9000; ++i) {
        const cv::Point at(random.uniform(0, 1590), random.uniform(0, 1590));
        cv::rectangle(noise, at, at + cv::Point(random.uniform(1, 7), random.uniform(1, 9)), cv::Scalar(0), cv::FILLED);
    }
    EXPECT_LE(mEngine->read(noise, PageMode::Sparse, Deadline::in(std::chrono::seconds(4))).size(), 1500U);
}

}  // namespace
}  // namespace qv::recognition
