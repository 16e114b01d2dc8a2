#include "QVCardScan/QVCardProcessingRequest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

using testing::ElementsAre;

QVImageArray oneImage() {
    return std::make_shared<std::vector<std::shared_ptr<qv::Image>>>(1, qv::Image::initWithData({'x'}));
}

QVStringArray strings(std::initializer_list<std::string> texts) {
    return std::make_shared<std::vector<std::string>>(texts);
}

TEST(QVCardProcessingRequest, KeepsWhatItIsMadeWith) {
    const auto images = oneImage();
    const auto hashes = strings({"hash"});
    const auto request =
        QVCardProcessingRequest::initWithNoteUUID("note", images, hashes, "token", /*processImageForOCR=*/true);
    EXPECT_EQ(request->noteUUID(), "note");
    EXPECT_EQ(request->cardImages(), images);
    EXPECT_EQ(request->imageHashes(), hashes);
    EXPECT_EQ(request->authToken(), "token");
    EXPECT_TRUE(request->processImageForOCR());
}

TEST(QVCardProcessingRequest, StartsWithoutLanguageAndWithANote) {
    const auto request = QVCardProcessingRequest::initWithNoteUUID("note", oneImage(), strings({"hash"}), "token",
                                                                   /*processImageForOCR=*/true);
    EXPECT_EQ(request->recoLanguage(), std::nullopt);
    EXPECT_FALSE(request->skipNoteGeneration());
}

TEST(QVCardProcessingRequest, TakesEverythingAbsent) {
    const auto request = QVCardProcessingRequest::initWithNoteUUID(std::nullopt, nullptr, nullptr, std::nullopt,
                                                                   /*processImageForOCR=*/false);
    EXPECT_EQ(request->noteUUID(), std::nullopt);
    EXPECT_EQ(request->cardImages(), nullptr);
    EXPECT_EQ(request->imageHashes(), nullptr);
    EXPECT_EQ(request->authToken(), std::nullopt);
    EXPECT_FALSE(request->processImageForOCR());
}

TEST(QVCardProcessingRequest, StartsWithNothingWhenItIsMadePlainly) {
    const QVCardProcessingRequest request;
    EXPECT_EQ(request.noteUUID(), std::nullopt);
    EXPECT_EQ(request.cardImages(), nullptr);
    EXPECT_EQ(request.imageHashes(), nullptr);
    EXPECT_EQ(request.authToken(), std::nullopt);
    EXPECT_FALSE(request.processImageForOCR());
    EXPECT_EQ(request.recoLanguage(), std::nullopt);
    EXPECT_FALSE(request.skipNoteGeneration());
}

TEST(QVCardProcessingRequest, TellsEmptyFromAbsent) {
    QVCardProcessingRequest request;
    request.setNoteUUID("");
    request.setAuthToken("");
    request.setRecoLanguage("");
    EXPECT_EQ(request.noteUUID(), "");
    EXPECT_EQ(request.authToken(), "");
    EXPECT_EQ(request.recoLanguage(), "");
    const QVString absent;
    request.setNoteUUID(absent);
    EXPECT_EQ(request.noteUUID(), std::nullopt);
}

TEST(QVCardProcessingRequest, ReplacesEveryProperty) {
    const auto request =
        QVCardProcessingRequest::initWithNoteUUID("a", oneImage(), strings({"h"}), "t", /*processImageForOCR=*/true);
    const auto images = oneImage();
    const auto hashes = strings({"h2", "h3"});
    request->setNoteUUID("b");
    request->setCardImages(images);
    request->setImageHashes(hashes);
    request->setAuthToken("t2");
    request->setProcessImageForOCR(false);
    request->setRecoLanguage("de");
    request->setSkipNoteGeneration(true);
    EXPECT_EQ(request->noteUUID(), "b");
    EXPECT_EQ(request->cardImages(), images);
    EXPECT_EQ(request->imageHashes(), hashes);
    EXPECT_EQ(request->authToken(), "t2");
    EXPECT_FALSE(request->processImageForOCR());
    EXPECT_EQ(request->recoLanguage(), "de");
    EXPECT_TRUE(request->skipNoteGeneration());
}

TEST(QVCardProcessingRequest, CopiesItsTexts) {
    std::string note = "note";
    std::string token = "token";
    std::string language = "de";
    const auto request =
        QVCardProcessingRequest::initWithNoteUUID(note, oneImage(), nullptr, token, /*processImageForOCR=*/false);
    request->setRecoLanguage(language);
    for (std::string* text : {&note, &token, &language})
        text->append(" changed");
    EXPECT_EQ(request->noteUUID(), "note");
    EXPECT_EQ(request->authToken(), "token");
    EXPECT_EQ(request->recoLanguage(), "de");
    request->setNoteUUID(note);
    note = "again";
    EXPECT_EQ(request->noteUUID(), "note changed");
}

TEST(QVCardProcessingRequest, SharesItsArrays) {
    const auto images = oneImage();
    const auto hashes = strings({"h1"});
    const auto request =
        QVCardProcessingRequest::initWithNoteUUID("note", images, hashes, "token", /*processImageForOCR=*/false);
    images->push_back(qv::Image::initWithData({'y'}));
    hashes->push_back("h2");
    EXPECT_EQ(request->cardImages()->size(), 2U);
    EXPECT_THAT(*request->imageHashes(), ElementsAre("h1", "h2"));
}

TEST(QVCardProcessingRequest, ReleasesWhatItHeld) {
    auto images = oneImage();
    auto hashes = strings({"h1"});
    const std::weak_ptr watchedImages = images;
    const std::weak_ptr watchedHashes = hashes;
    auto request = QVCardProcessingRequest::initWithNoteUUID("note", std::move(images), std::move(hashes), "token",
                                                             /*processImageForOCR=*/false);
    request->setImageHashes(nullptr);
    EXPECT_TRUE(watchedHashes.expired());
    EXPECT_FALSE(watchedImages.expired());
    request.reset();
    EXPECT_TRUE(watchedImages.expired());
}

TEST(QVCardProcessingRequest, IsForSeveralThreads) {
    const auto request =
        QVCardProcessingRequest::initWithNoteUUID(std::string(100, 'a'), oneImage(), strings({"a", "a"}), "a",
                                                  /*processImageForOCR=*/false);
    std::atomic<int> torn{0};
    const auto write = [&](char letter) {
        const QVString present = std::string(100, letter);
        const QVString absent;
        for (int i = 0; i < 1000; ++i) {
            const std::string text(100, letter);
            request->setNoteUUID(text);
            request->setAuthToken(i % 2 ? present : absent);
            request->setRecoLanguage(text);
            request->setImageHashes(strings({text, text}));
            request->setCardImages(i % 2 ? oneImage() : nullptr);
            request->setProcessImageForOCR(i % 2 == 0);
            request->setSkipNoteGeneration(i % 2 == 0);
        }
    };
    const auto read = [&] {
        for (int i = 0; i < 1000; ++i) {
            const std::string note = *request->noteUUID();
            if (note != std::string(100, note[0])) ++torn;
            const auto hashes = request->imageHashes();
            if ((*hashes)[0] != (*hashes)[1]) ++torn;
            if (const auto images = request->cardImages(); images && images->size() != 1) ++torn;
            if (const auto token = request->authToken(); token && token->size() != 100 && *token != "a") ++torn;
            if (const auto language = request->recoLanguage(); language && language->size() != 100) ++torn;
            if (request->processImageForOCR() && request->skipNoteGeneration() && !request->imageHashes()) ++torn;
        }
    };
    {
        std::vector<std::jthread> threads;
        threads.emplace_back(write, 'a');
        threads.emplace_back(write, 'b');
        threads.emplace_back(read);
        threads.emplace_back(read);
    }
    EXPECT_EQ(torn, 0);
}

}  // namespace
