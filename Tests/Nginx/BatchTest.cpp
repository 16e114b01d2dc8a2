#include "Nginx/Nginx.h"
#include "QVCardScan/QVBizCardManager.h"
#include "QVPlatform/Image.h"
#include "Support/Gate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <iostream>
#include <map>
#include <mutex>
#include <string>
#include <thread>

namespace {

using namespace balanced;
using testing::HasSubstr;

const std::map<std::string, std::string> kCards = {{"plain.jpg", "Clara Whitcombe"},
                                                   {"dark.jpg", "Noor Castellane"},
                                                   {"social.jpg", "Imogen Fennimore"},
                                                   {"two-sided-front.jpg", "Edmund Ha"}};

/// A batch of cards on its way through the library, and what has come back of it.
class Batch {
  public:
    Batch(const std::string& server, int copies) {
        mManager->setupOperationQueue();
        mManager->setServerURL(server);
        for (int i = 0; i < copies; ++i) {
            for (const auto& [sample, name] : kCards)
                mExpected[sample + '-' + std::to_string(i)] = sample;
        }
        for (const auto& [note, sample] : mExpected)
            add(note, sample);
    }

    std::size_t size() const { return mExpected.size(); }
    bool wait() const { return mAllCame.waitFor(std::chrono::seconds(180)); }

    /// Every card came once, without an error, as the person that its picture shows.
    void expectComplete() {
        const std::lock_guard lock(mMutex);
        EXPECT_EQ(mResponses.size(), mExpected.size());
        for (const auto& [note, sample] : mExpected) {
            ASSERT_EQ(mResponses.count(note), 1U) << note;
            const auto& response = mResponses.find(note)->second;
            EXPECT_TRUE(response->errors()->empty()) << note;
            EXPECT_THAT(response->contactName().value_or("nobody"), HasSubstr(kCards.at(sample))) << note;
        }
    }

  private:
    void add(const std::string& note, const std::string& sample) {
        auto images = std::make_shared<std::vector<std::shared_ptr<qv::Image>>>();
        images->push_back(qv::Image::initWithContentsOfFile(std::string(QV_SOURCE_DIR) + "/Samples/" + sample));
        mManager->addRequest(QVCardProcessingRequest::initWithNoteUUID(note, images, nullptr, kToken,
                                                                       /*processImageForOCR=*/false),
                             [this](auto response) {
                                 const std::lock_guard lock(mMutex);
                                 mResponses.emplace(response->originalNoteUUID().value_or(""), response);
                                 if (mResponses.size() == mExpected.size()) mAllCame.open();
                             });
    }

    std::map<std::string, std::string> mExpected;
    std::mutex mMutex;
    std::multimap<std::string, std::shared_ptr<QVCardProcessingResponse>> mResponses;
    testsupport::Gate mAllCame;
    std::shared_ptr<QVBizCardManager> mManager = std::make_shared<QVBizCardManager>();
};

TEST(BatchTest, EveryCardEndsWithOneResultWhenAServerIsKilled) {
    Recod first;
    const Recod second;
    const Nginx nginx({first.port(), second.port()});
    Batch batch(nginx.url(), 3);
    // In the middle: it has finished cards, and one is lost with it.
    while (first.finished() < 2 || first.figure("qvcardrecod_busy_workers") < 1)
        std::this_thread::yield();
    const double before = first.finished();
    first.kill();
    EXPECT_TRUE(batch.wait());
    batch.expectComplete();
    std::cout << batch.size() << " cards: " << before << " or one more from the server that was killed, "
              << second.finished() << " from the other\n";
    EXPECT_GE(second.finished() + before + 1, static_cast<double>(batch.size()));
    EXPECT_THAT(nginx.errorLog(), HasSubstr("upstream prematurely closed connection"));
}

TEST(BatchTest, TheServersShareABatch) {
    const Recod first;
    const Recod second;
    const Nginx nginx({first.port(), second.port()});
    Batch batch(nginx.url(), 2);
    EXPECT_TRUE(batch.wait());
    batch.expectComplete();
    EXPECT_EQ(first.finished() + second.finished(), static_cast<double>(batch.size()));
    EXPECT_GE(first.finished(), 1);
    EXPECT_GE(second.finished(), 1);
}

}  // namespace
