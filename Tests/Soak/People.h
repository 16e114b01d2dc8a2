#pragma once

#include "QVCardScan/QVBizCardManager.h"
#include "QVPlatform/NotificationCenter.h"
#include "QVSocialSearch/QVAddressBook.h"
#include "Support/DrivenMainQueue.h"
#include "Support/TemporaryFolder.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace soak {

class PeopleProviders;

/// What happens to the people on the cards of a round: each is searched, with providers that find somebody, nobody, or
/// fail, and saved into a folder of vCards; then both once more, so that records are found and updated. Time stands
/// still but for the one look-up that is late. Belongs to the main thread.
class People {
  public:
    using Responses = std::vector<std::shared_ptr<QVCardProcessingResponse>>;

    explicit People(std::shared_ptr<QVBizCardManager> manager);
    ~People();
    People(const People&) = delete;
    People& operator=(const People&) = delete;

    /// Takes a round's responses the whole way, and takes their cards out of the folder then. Returns what went wrong.
    std::vector<std::string> visit(const Responses& responses);

    /// Runs what waits for the main thread until `done` holds; false after a minute.
    bool pumpUntil(const std::function<bool()>& done) { return mMain.pumpUntil(done); }

    std::size_t searches() const { return mSearches; }
    std::size_t created() const { return mCreated; }
    std::size_t updated() const { return mUpdated; }

  private:
    using Response = Responses::value_type;

    void hear(const qv::Notification& notification);
    void searchAll(const Responses& responses);
    void search(const Responses& group);
    void searchLate(const Response& response);
    void saveAll(const Responses& responses);
    void save(const Response& response);
    void countSave(const QVAddressBookSaveResult& result, QVAddressBookSaveOutcome expected);
    void emptyFolder(std::size_t expected);
    void require(bool condition, const std::string& problem);

    testsupport::DrivenMainQueue mMain;
    const testsupport::TemporaryFolder mFolder;
    const std::shared_ptr<QVBizCardManager> mManager;
    const std::shared_ptr<PeopleProviders> mProviders;
    qv::NotificationCenter::Token mToken;
    std::map<std::string, int> mHeard;                               ///< notifications by note
    std::map<std::string, std::shared_ptr<QVSocialProfile>> mFound;  ///< what they brought, by note
    std::vector<std::string> mProblems;
    std::size_t mSearches = 0;
    std::size_t mCreated = 0;
    std::size_t mUpdated = 0;
};

}  // namespace soak
