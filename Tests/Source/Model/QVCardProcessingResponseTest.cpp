#include "QVCardScan/QVCardProcessingOperation.h"
#include "QVCardScan/QVCardProcessingResponse.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <type_traits>

namespace {

// What is read-only to the host has no setter among the members.
template <typename Response>
concept HasSetOriginalNoteUUID = requires(Response response) {
    response.setOriginalNoteUUID(QVString());
};
template <typename Response>
concept HasSetContactName = requires(Response response) {
    response.setContactName(QVString());
};
template <typename Response>
concept HasSetContactEmails = requires(Response response) {
    response.setContactEmails(QVStringArray());
};
template <typename Response>
concept HasSetContactPhones = requires(Response response) {
    response.setContactPhones(QVStringArray());
};
template <typename Response>
concept HasSetCardImages = requires(Response response) {
    response.setCardImages(QVImageArray());
};
template <typename Response>
concept HasSetErrors = requires(Response response) {
    response.setErrors(QVErrorArray());
};

TEST(QVCardProcessingResponse, IsReadOnlyWhereTheFrameworkAloneWrites) {
    EXPECT_FALSE(HasSetOriginalNoteUUID<QVCardProcessingResponse>);
    EXPECT_FALSE(HasSetContactName<QVCardProcessingResponse>);
    EXPECT_FALSE(HasSetContactEmails<QVCardProcessingResponse>);
    EXPECT_FALSE(HasSetContactPhones<QVCardProcessingResponse>);
    EXPECT_FALSE(HasSetCardImages<QVCardProcessingResponse>);
    EXPECT_FALSE(HasSetErrors<QVCardProcessingResponse>);
}

TEST(QVCardProcessingResponse, StartsWithNothing) {
    const QVCardProcessingResponse response;
    EXPECT_EQ(response.originalNoteUUID(), std::nullopt);
    EXPECT_EQ(response.qvmlContent(), std::nullopt);
    EXPECT_EQ(response.cardImages(), nullptr);
    EXPECT_EQ(response.avatars(), nullptr);
    EXPECT_EQ(response.contact(), nullptr);
    EXPECT_EQ(response.contactName(), std::nullopt);
    EXPECT_EQ(response.contactEmails(), nullptr);
    EXPECT_EQ(response.contactPhones(), nullptr);
    EXPECT_EQ(response.card(), nullptr);
    EXPECT_FALSE(response.willStartLinkedInSearch());
    EXPECT_EQ(response.imageRotationMap(), nullptr);
    EXPECT_EQ(response.errors(), nullptr);
    EXPECT_EQ(response.rawResultForFirstCard(), std::nullopt);
    EXPECT_EQ(response.rawResultForSecondCard(), std::nullopt);
}

TEST(QVCardProcessingResponse, KeepsWhatTheHostSets) {
    QVCardProcessingResponse response;
    const auto avatars = std::make_shared<std::vector<std::shared_ptr<qv::Image>>>();
    const auto contact = std::make_shared<QVVeltoContact>();
    const auto card = std::make_shared<QVBusinessCard>();
    const auto map = std::make_shared<std::map<std::string, std::int64_t>>();
    std::string text = "content";
    response.setQvmlContent(text);
    text = "changed";
    response.setAvatars(avatars);
    response.setContact(contact);
    response.setCard(card);
    response.setWillStartLinkedInSearch(true);
    response.setImageRotationMap(map);
    response.setRawResultForFirstCard("first");
    response.setRawResultForSecondCard("");
    EXPECT_EQ(response.qvmlContent(), "content");
    EXPECT_EQ(response.avatars(), avatars);
    EXPECT_EQ(response.contact(), contact);
    EXPECT_EQ(response.card(), card);
    EXPECT_TRUE(response.willStartLinkedInSearch());
    EXPECT_EQ(response.imageRotationMap(), map);
    EXPECT_EQ(response.rawResultForFirstCard(), "first");
    EXPECT_EQ(response.rawResultForSecondCard(), "");
}

TEST(QVCardProcessingResponse, SharesItsCollections) {
    QVCardProcessingResponse response;
    const auto map = std::make_shared<std::map<std::string, std::int64_t>>();
    response.setImageRotationMap(map);
    (*map)["hash"] = 90;
    EXPECT_EQ(response.imageRotationMap()->at("hash"), 90);
}

TEST(QVCardProcessingResponse, ReleasesWhatItHeld) {
    auto response = std::make_unique<QVCardProcessingResponse>();
    auto contact = std::make_shared<QVVeltoContact>();
    auto card = std::make_shared<QVBusinessCard>();
    const std::weak_ptr watchedContact = contact;
    const std::weak_ptr watchedCard = card;
    response->setContact(std::move(contact));
    response->setCard(std::move(card));
    response->setCard(nullptr);
    EXPECT_TRUE(watchedCard.expired());
    EXPECT_FALSE(watchedContact.expired());
    response.reset();
    EXPECT_TRUE(watchedContact.expired());
}

// Made without a server's address, the only response that needs no server.
TEST(QVCardProcessingResponse, HasOneErrorAndNoNoteWithoutAServer) {
    const auto request = QVCardProcessingRequest::initWithNoteUUID("note", nullptr, nullptr, "token",
                                                                   /*processImageForOCR=*/false);
    const auto operation = QVCardProcessingOperation::initWithRequest(request, std::nullopt);
    operation->main();
    const auto response = operation->response();
    ASSERT_TRUE(response);
    ASSERT_TRUE(response->errors());
    ASSERT_EQ(response->errors()->size(), 1U);
    EXPECT_EQ(response->errors()->front().domain, "kQVCardProcessingErrorDomain");
    EXPECT_EQ(response->errors()->front().code, 1);
    EXPECT_TRUE(response->errors()->front().userInfo.empty());
    EXPECT_EQ(response->originalNoteUUID(), std::nullopt);
}

TEST(QVCardProcessingResponse, IsForSeveralThreads) {
    QVCardProcessingResponse response;
    std::atomic<int> torn{0};
    const auto write = [&](char letter) {
        const QVString present = std::string(100, letter);
        const QVString absent;
        for (int i = 0; i < 1000; ++i) {
            const std::string text(100, letter);
            response.setQvmlContent(text);
            response.setRawResultForFirstCard(text);
            response.setRawResultForSecondCard(i % 2 ? present : absent);
            response.setContact(i % 2 ? std::make_shared<QVVeltoContact>() : nullptr);
            response.setCard(std::make_shared<QVBusinessCard>());
            response.setAvatars(nullptr);
            response.setWillStartLinkedInSearch(i % 2 == 0);
            response.setImageRotationMap(std::make_shared<std::map<std::string, std::int64_t>>());
        }
    };
    const auto isWhole = [](const QVString& text) { return !text || *text == std::string(100, (*text)[0]); };
    const auto read = [&] {
        for (int i = 0; i < 1000; ++i) {
            if (!isWhole(response.qvmlContent()) || !isWhole(response.rawResultForFirstCard()) ||
                !isWhole(response.rawResultForSecondCard())) {
                ++torn;
            }
            if (const auto card = response.card(); card && card->score() != 0) ++torn;
            if (const auto contact = response.contact(); contact && contact->fullName()) ++torn;
            if (const auto map = response.imageRotationMap(); map && !map->empty()) ++torn;
            if (response.willStartLinkedInSearch() && response.avatars()) ++torn;
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
