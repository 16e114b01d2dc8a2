#pragma once

#include "HostObjects.h"
#include "QVCardScan/QVCardScanDefines.h"
#include "QVPlatform/Bundle.h"
#include "QVPlatform/Log.h"
#include "QVPlatform/NotificationCenter.h"
#include "QVSocialSearch/QVAddressBookController.h"
#include "QVSocialSearch/QVLinkFetcher.h"
#include "QVSocialSearch/QVSocialSearchManager.h"
#include "Source/Controller/ManagerFixtures.h"
#include "Source/Controller/SocialSearchFixtures.h"

namespace misuse {

/// Has a label of its own in the note.
inline const scans::Item kAddress{"ADDRESS", "1 Example Street, Springfield"};

/// How often the host was told of a card, a search and a save.
struct Told {
    int cards = 0;
    int searches = 0;
    int saves = 0;
    bool operator==(const Told&) const = default;
};
inline void PrintTo(const Told& told, std::ostream* out) {
    *out << told.cards << " cards, " << told.searches << " searches, " << told.saves << " saves";
}

/// A host that supplies everything that the library can be supplied with, in a process whose main thread is the test's.
class WholeHost {
  public:
    WholeHost() {
        mServer.respond(scans::answer({scans::kName, scans::kTitle, scans::kEmail, scans::kPhone, kAddress}));
        mInner = socialsearch::scannedCard("inner");
        mManager = std::make_shared<QVBizCardManager>();
        mManager->setupOperationQueue();
        mManager->setServerURL(mServer.url());
        mManager->setLinkedInKey("key");
        mManager->setLinkedInSecret("secret");
        mExecutor = std::make_shared<Executor>(desk);
        mDataSource = std::make_shared<DataSource>(desk);
        install();
        mObservation = qv::NotificationCenter::defaultCenter().addObserverForName(
            kQVSocialSearchFinishedNotification, [desk = desk, heard = mHeard](const qv::Notification& notification) {
                ++(*heard)[std::any_cast<std::string>(
                    notification.userInfo.at(std::string(kQVSocialSearchRequestIDKey)))];
                desk->visit(Place::Observer);
            });
    }
    ~WholeHost() { letEverythingGo(); }
    WholeHost(const WholeHost&) = delete;
    WholeHost& operator=(const WholeHost&) = delete;

    /// One card, its search and its save, with one mistake of the host's in between; says what the host was told. An
    /// answer that does not come by itself is not waited for, and the clock goes on instead.
    Told runCard(const std::string& note, bool answersComeByThemselves) {
        const auto executor = mExecutor;
        const auto outcome = std::make_shared<managers::Outcome>();
        add(note, outcome);
        if (const auto manager = this->manager()) manager->addRequest(scans::request("no completion"), {});
        EXPECT_TRUE(outcome->released.waitFor());
        const auto saved = std::make_shared<Saved>();
        if (const auto manager = this->manager(); manager && outcome->response) {
            manager->addSocialSearchRequestFromCardProcessingResponse(outcome->response);
            const auto isOver = [&] { return heard(note) > 0 || !this->manager(); };
            if (answersComeByThemselves) {
                EXPECT_TRUE(executor->pumped.pumpUntil(isOver, std::chrono::minutes(1)));
            }
            executor->clock.advance(std::chrono::seconds(10));
            executor->pumped.pump();
        }
        if (this->manager()) save(saved);
        const auto isSaved = [&] { return saved->released.isOpen() || !this->manager(); };
        EXPECT_TRUE(executor->pumped.pumpUntil(isSaved, std::chrono::minutes(1)));
        return {outcome->calls, heard(note), saved->calls};
    }

    /// One card, whose outcome tells when the library has let it go.
    managers::OutcomePtr startCard(const std::string& note) {
        auto outcome = std::make_shared<managers::Outcome>();
        add(note, outcome);
        return outcome;
    }
    /// The one search for that card.
    void startSearch(const managers::OutcomePtr& card) {
        manager()->addSocialSearchRequestFromCardProcessingResponse(card->response);
    }

    /// What a callback may do, all of it: another card, search and save, and every setting once more.
    void useEverything() {
        const auto manager = this->manager();
        add("inner", mInnerOutcome);
        manager->cancelRequestWithIDString("nobody's");
        manager->addSocialSearchRequestFromCardProcessingResponse(mInner);
        QVSocialSearchManager::sharedManager()->addSearchByRequest(
            QVSocialSearchRequest::initWithEmailAddress("ada@example.com"), [](const auto&) {});
        save(mInnerSaved);
        install();
    }
    /// Waits for what `useEverything` started, and says what the host was told of that.
    Told finishInner() {
        const auto isOver = [&] { return heard("inner") > 0 && mInnerSaved->released.isOpen(); };
        EXPECT_TRUE(mExecutor->pumped.pumpUntil(isOver, std::chrono::minutes(1)));
        EXPECT_TRUE(mInnerOutcome->released.waitFor());
        return {mInnerOutcome->calls, heard("inner"), mInnerSaved->calls};
    }

    /// What a callback may do to end everything. Nothing that was handed to the library is held here any more.
    void letEverythingGo() {
        qv::Log::setSink({});
        qv::AssertionHandler::setHandler({});
        qv::Bundle::setLocalizer({});
        QVLinkFetcher::setFetcher({});
        QVSocialSearchManager::sharedManager()->setProviders({});
        QVAddressBookController::sharedController()->setAddressBook(nullptr);
        qv::MainQueue::setExecutor(nullptr);
        mObservation.reset();
        std::shared_ptr<QVBizCardManager> manager;
        std::shared_ptr<DataSource> dataSource;
        std::shared_ptr<Executor> executor;
        const std::lock_guard lock(mMutex);
        manager.swap(mManager);
        dataSource.swap(mDataSource);
        executor.swap(mExecutor);
    }

    struct Saved {
        testsupport::Gate released;
        std::atomic<int> calls{0};
    };
    void save(const std::shared_ptr<Saved>& saved) {
        const std::shared_ptr<void> whileHeld(nullptr, [saved](void*) { saved->released.open(); });
        QVAddressBookController::sharedController()->saveSocialProfileInAddressBook(
            std::make_shared<QVSocialProfile>(), [desk = desk, saved, whileHeld](const QVAddressBookSaveResult&) {
                ++saved->calls;
                desk->visit(Place::SaveHandler);
            });
    }

    std::shared_ptr<QVBizCardManager> manager() const {
        const std::lock_guard lock(mMutex);
        return mManager;
    }
    /// The loop that the test turns.
    std::shared_ptr<Executor> executor() const { return mExecutor; }
    /// How often a search of that note was announced.
    int heard(const std::string& note) const {
        const auto found = mHeard->find(note);
        return found == mHeard->end() ? 0 : found->second;
    }

    const DeskPtr desk = std::make_shared<Desk>();

  private:
    using Heard = std::map<std::string, int>;

    void install() {
        manager()->setContactNoteDataSource(mDataSource);
        qv::Log::setSink([desk = desk, present = Desk::presence(desk)](std::string_view message) {
            desk->log(message);
            desk->visit(Place::LogSink);
        });
        qv::AssertionHandler::setHandler([desk = desk, present = Desk::presence(desk)](const qv::AssertionFailure&) {
            desk->visit(Place::AssertionHandler);
        });
        qv::Bundle::setLocalizer([desk = desk, present = Desk::presence(desk)](std::string_view) {
            desk->visit(Place::Localizer);
            return std::optional<std::string>();
        });
        QVLinkFetcher::setFetcher([desk = desk, present = Desk::presence(desk)](const std::string&) {
            desk->visit(Place::LinkFetcher);
            return std::optional<qv::Data>();
        });
        QVSocialSearchManager::sharedManager()->setProviders({std::make_shared<Provider>(desk)});
        QVAddressBookController::sharedController()->setAddressBook(std::make_shared<AddressBook>(desk));
        qv::MainQueue::setExecutor(mExecutor);
    }

    void add(const std::string& note, const managers::OutcomePtr& outcome) {
        manager()->addRequest(scans::request(note),
                              managers::completionInto(outcome, [desk = desk] { desk->visit(Place::Completion); }));
    }

    testsupport::ScriptedServer mServer;
    std::shared_ptr<QVCardProcessingResponse> mInner;
    mutable std::mutex mMutex;
    std::shared_ptr<QVBizCardManager> mManager;
    std::shared_ptr<DataSource> mDataSource;
    std::shared_ptr<Executor> mExecutor;
    /// By note; main thread only.
    std::shared_ptr<Heard> mHeard = std::make_shared<Heard>();
    qv::NotificationCenter::Token mObservation;
    const managers::OutcomePtr mInnerOutcome = std::make_shared<managers::Outcome>();
    const std::shared_ptr<Saved> mInnerSaved = std::make_shared<Saved>();
};

}  // namespace misuse
