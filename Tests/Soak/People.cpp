#include "Soak/People.h"

#include "QVCardScan/QVCardScanDefines.h"
#include "QVCardScan/QVSocialSearchResult.h"
#include "QVCardScan/QVVeltoContact.h"
#include "QVSocialSearch/QVAddressBookController.h"
#include "QVSocialSearch/QVVCardFolder.h"
#include "Soak/PeopleProviders.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace soak {

namespace {

/// A provider takes no more look-ups at once.
constexpr std::size_t kSearchesAtOnce = 8;

std::string noteOf(const std::shared_ptr<QVCardProcessingResponse>& response) {
    return response->originalNoteUUID().value_or("");
}

bool isRecord(const std::shared_ptr<QVSocialProfile>& profile) {
    return profile && (profile->profileType() & QVSocialProfileSourceAddressBook) != 0 && profile->addressBookUID();
}

}  // namespace

People::People(std::shared_ptr<QVBizCardManager> manager)
    : mManager(std::move(manager)),
      mProviders(std::make_shared<PeopleProviders>()),
      mToken(qv::NotificationCenter::defaultCenter().addObserverForName(
          kQVSocialSearchFinishedNotification, [this](const auto& notification) { hear(notification); })) {
    mManager->setLinkedInKey("key");
    mManager->setLinkedInSecret("secret");
    QVSocialSearchManager::setSharedManager(mProviders->manager());
    QVAddressBookController::sharedController()->setAddressBook(std::make_shared<QVVCardFolder>(mFolder.path()));
}

People::~People() {
    QVSocialSearchManager::setSharedManager(nullptr);
    QVAddressBookController::sharedController()->setAddressBook(nullptr);
}

std::vector<std::string> People::visit(const Responses& responses) {
    mProblems.clear();
    mFound.clear();
    if (responses.empty()) return {};
    const std::size_t before = mCreated;
    searchAll(responses);
    saveAll(responses);
    searchAll(responses);
    saveAll(responses);
    searchLate(responses.front());
    emptyFolder(mCreated - before);
    mFound.clear();
    return std::exchange(mProblems, {});
}

void People::hear(const qv::Notification& notification) {
    const auto result = QVSocialSearchResult::fromNotification(notification);
    require(result && mHeard.contains(result->requestID), "a notification that tells of no search");
    if (!result) return;
    ++mHeard[result->requestID];
    mFound[result->requestID] = result->socialProfile;
}

void People::searchAll(const Responses& responses) {
    for (std::size_t begin = 0; begin < responses.size(); begin += kSearchesAtOnce) {
        const auto end =
            responses.begin() + static_cast<std::ptrdiff_t>(std::min(begin + kSearchesAtOnce, responses.size()));
        search({responses.begin() + static_cast<std::ptrdiff_t>(begin), end});
    }
    // The searches' own time-outs fall due now, and have nothing left to say.
    mMain.pass(std::chrono::minutes(1));
    for (const auto& [note, times] : mHeard)
        require(times == 1, note + "'s search was answered " + std::to_string(times) + " times");
    mHeard.clear();
}

void People::search(const Responses& group) {
    for (const auto& response : group) {
        mHeard[noteOf(response)] = 0;
        ++mSearches;
        mManager->addSocialSearchRequestFromCardProcessingResponse(response);
    }
    const bool answered = mMain.pumpUntil([&] {
        return std::all_of(group.begin(), group.end(), [&](const auto& one) { return mHeard[noteOf(one)] > 0; });
    });
    require(answered, "a search without an answer");
}

void People::searchLate(const Response& response) {
    const auto gate = std::make_shared<testsupport::Gate>();
    mProviders->waitFor(gate);
    mHeard[noteOf(response)] = 0;
    ++mSearches;
    mManager->addSocialSearchRequestFromCardProcessingResponse(response);
    mMain.pump();
    require(mHeard[noteOf(response)] == 0, "an answer before the last provider's");
    mMain.pass(QVSocialSearchManager::kTimeForProviders);
    require(mHeard[noteOf(response)] == 1, "no answer when the providers' time was over");
    gate->open();
    mMain.pass(std::chrono::minutes(1));
    require(mHeard[noteOf(response)] == 1, "a second answer");
    mHeard.clear();
}

void People::saveAll(const Responses& responses) {
    const std::size_t before = mCreated + mUpdated;
    for (const auto& response : responses)
        save(response);
    const bool saved = mMain.pumpUntil([&] { return mCreated + mUpdated == before + responses.size(); });
    require(saved, "a save without an end");
}

void People::save(const Response& response) {
    const auto contact = response->contact();
    const auto profile = mFound[noteOf(response)];
    const auto expected = isRecord(profile) ? QVAddressBookSaveOutcome::Updated : QVAddressBookSaveOutcome::Created;
    contact->saveToContactsWithVeltoContact(contact, profile,
                                            [this, expected](const auto& result) { countSave(result, expected); });
}

void People::countSave(const QVAddressBookSaveResult& result, QVAddressBookSaveOutcome expected) {
    require(!result.error && result.outcome == expected, "a save that failed or did something else");
    ++(expected == QVAddressBookSaveOutcome::Updated ? mUpdated : mCreated);
}

void People::emptyFolder(std::size_t expected) {
    std::vector<std::filesystem::path> cards;
    for (const auto& entry : std::filesystem::directory_iterator(mFolder.path())) {
        if (entry.path().extension() == ".vcf") cards.push_back(entry.path());
    }
    require(cards.size() == expected, "not as many cards in the folder as were created");
    for (const auto& card : cards)
        std::filesystem::remove(card);
}

void People::require(bool condition, const std::string& problem) {
    if (!condition) mProblems.push_back("people: " + problem);
}

}  // namespace soak
