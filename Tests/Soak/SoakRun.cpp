#include "Soak/SoakRun.h"

#include "QVCardScan/QVContactNoteDataSource.h"
#include "QVCardScan/QVVeltoContact.h"
#include "QVPlatform/MainQueue.h"
#include "Soak/PlannedCard.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace soak {

namespace {

constexpr std::chrono::seconds kLongestPause{90};  ///< from one end to the next; ends a broken run
constexpr std::size_t kMostProblems = 50;

}  // namespace

/// The host knows some of the people already.
class SoakRun::HostContacts : public QVContactNoteDataSource {
  public:
    bool implementsContactMatchingFullName() const override { return true; }

    std::shared_ptr<QVVeltoContact> contactMatchingFullName(const QVString& fullName, const QVString&, const QVString&,
                                                            const QVString& email, const QVString&) override {
        const auto number = PlannedCard::numberIn(email.value_or(""));
        if (!number || !PlannedCard(*number).isKnownToHost()) return nullptr;
        auto contact = std::make_shared<QVVeltoContact>();
        contact->setFullName(fullName);
        contact->setJobTitle("Acquaintance");
        contact->setURL("https://host.example.com/" + std::to_string(*number));
        return contact;
    }
};

SoakRun::SoakRun(const SoakCards& cards, const std::string& serverURL, Planted planted)
    : mCards(cards), mPlanted(planted), mHostContacts(std::make_shared<HostContacts>()), mPeople(mManager) {
    mManager->setupOperationQueue();
    mManager->setServerURL(serverURL);
    mManager->setContactNoteDataSource(mHostContacts);
}

void SoakRun::round(int first, int end) {
    std::vector<std::string> noteUUIDs;
    for (int number = first; number < end; ++number)
        noteUUIDs.push_back("note-" + std::to_string(number));
    mEnds.expect(noteUUIDs);
    for (int number = first; number < end; ++number)
        add(number);
    if (!mEnds.waitForAll(kLongestPause)) note("cards that do not end");
    awaitRelease();
    mCancelled += mEnds.cancellations();
    for (std::string& problem : mEnds.problems())
        note(std::move(problem));
    for (std::string& problem : mPeople.visit(std::exchange(mPersons, {})))
        note(std::move(problem));
}

void SoakRun::add(int number) {
    const SoakCard card = mCards.card(number);
    const std::string noteUUID = card.request->noteUUID().value_or("");
    mRequests.emplace_back(card.request);
    mManager->addRequest(card.request,
                         [this, number, noteUUID](const auto& response) { complete(number, noteUUID, response); });
    if (card.isCancelled) mManager->cancelRequestWithIDString(noteUUID);
}

/// On a thread of the queue.
void SoakRun::complete(int number, const std::string& noteUUID,
                       const std::shared_ptr<QVCardProcessingResponse>& response) {
    const std::string problem = response ? mCards.problemOf(number, *response) : "no response";
    if (!problem.empty()) note(noteUUID + ": " + problem);
    plant(mPlanted, number);
    if (mCards.hasPerson(number) && problem.empty()) {
        const std::lock_guard lock(mMutex);
        mPersons.push_back(response);
    }
    ++mCompleted;
    const int times = number != 0 ? 1 : mPlanted == Planted::Lost ? 0 : mPlanted == Planted::Twice ? 2 : 1;
    for (int time = 0; time < times; ++time)
        mEnds.completed(noteUUID);
}

/// The thread that told of an end lets go of its operation a moment later.
void SoakRun::awaitRelease() {
    const auto isGone = [](const auto& request) { return request.expired(); };
    const bool released = mPeople.pumpUntil([&] { return std::all_of(mRequests.begin(), mRequests.end(), isGone); });
    if (!released) note("a request that is held for good");
    mRequests.clear();
}

void SoakRun::note(std::string problem) {
    const std::lock_guard lock(mMutex);
    if (mProblems.size() < kMostProblems) mProblems.push_back(std::move(problem));
}

}  // namespace soak
