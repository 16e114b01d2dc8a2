#include "QVSocialSearch/QVSocialSearchManager.h"

#include "AddressBook/AddressBookProvider.h"
#include "Merging/EntryMeaning.h"
#include "QVPlatform/Guarded.h"
#include "QVPlatform/MainQueue.h"
#include "QVSocialSearch/QVAddressBookController.h"
#include "Search/ProviderDesk.h"
#include "Search/ProviderSearch.h"

#include <utility>

namespace {

/// Never destroyed: searches may still run while the process ends.
struct Shared {
    std::mutex mutex;
    const std::shared_ptr<QVSocialSearchManager> standard = std::make_shared<QVSocialSearchManager>();
    std::shared_ptr<QVSocialSearchManager> replacement;
};

Shared& shared() {
    static Shared* const made = new Shared;
    return *made;
}

void answerNothingFound(const QVString& requestID, QVSocialSearchManager::Completion completion) {
    qv::runGuarded("the main executor", [&] {
        qv::MainQueue::executor()->dispatchAsync([requestID, completion = std::move(completion)] {
            completion(QVSocialSearchResponse::initWithRequestID(requestID, nullptr));
        });
    });
}

}  // namespace

std::shared_ptr<QVSocialSearchManager> QVSocialSearchManager::sharedManager() {
    const std::lock_guard lock(shared().mutex);
    return shared().replacement ? shared().replacement : shared().standard;
}

void QVSocialSearchManager::setSharedManager(std::shared_ptr<QVSocialSearchManager> manager) {
    const std::lock_guard lock(shared().mutex);
    shared().replacement.swap(manager);
}

QVSocialSearchManager::QVSocialSearchManager()
    : mAddressBookDesk(std::make_shared<ProviderDesk>(std::make_shared<AddressBookProvider>())) {
}

QVSocialSearchManager::~QVSocialSearchManager() = default;

void QVSocialSearchManager::addSearchByRequest(std::shared_ptr<QVSocialSearchRequest> request, Completion completion) {
    if (!completion) return;
    const auto desks = desksForSearch();
    const auto asked = std::move(request);
    if (!asked || isBlank(asked->emailAddress()) || desks.empty()) {
        answerNothingFound(asked ? asked->requestID() : std::nullopt, std::move(completion));
        return;
    }
    // A copy: whoever asks may use the request for the next search meanwhile.
    qv::runGuarded("the main executor", [&] {
        ProviderSearch::start(std::make_shared<const QVSocialSearchRequest>(*asked), desks, kTimeForProviders,
                              std::move(completion));
    });
}

QVSocialSearchManager::Desks QVSocialSearchManager::desksForSearch() const {
    Desks desks;
    if (QVAddressBookController::sharedController()->addressBook()) desks.push_back(mAddressBookDesk);
    const std::lock_guard lock(mMutex);
    desks.insert(desks.end(), mDesks.begin(), mDesks.end());
    return desks;
}

QVSocialSearchManager::Providers QVSocialSearchManager::providers() const {
    const std::lock_guard lock(mMutex);
    Providers providers;
    for (const auto& desk : mDesks)
        providers.push_back(desk->provider());
    return providers;
}

void QVSocialSearchManager::setProviders(const Providers& providers) {
    Desks desks;
    for (const auto& provider : providers) {
        if (provider) desks.push_back(std::make_shared<ProviderDesk>(provider));
    }
    const std::lock_guard lock(mMutex);
    mDesks.swap(desks);
}

void QVSocialSearchManager::addProvider(std::shared_ptr<QVSocialSearchProvider> provider) {
    if (!provider) return;
    auto desk = std::make_shared<ProviderDesk>(std::move(provider));
    const std::lock_guard lock(mMutex);
    mDesks.push_back(std::move(desk));
}
