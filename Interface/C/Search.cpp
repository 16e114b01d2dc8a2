#include "Arguments.h"
#include "Handles.h"
#include "QVCardScan/QVBizCardManager.h"
#include "QVPlatform/MainQueue.h"
#include "QVPlatform/NotificationCenter.h"
#include "ResponseObject.h"
#include "SearchResultObject.h"
#include "UserData.h"
#include "qvcardscan.h"

#include <memory>
#include <mutex>
#include <utility>

using namespace qvc;

namespace {

/// A search that waits for its one announcement, and keeps itself until then. The lock is for a host's loop that runs
/// work on several threads.
class PendingSearch : public std::enable_shared_from_this<PendingSearch> {
  public:
    PendingSearch(std::shared_ptr<const ResponseObject> origin, qv_search_completion completion,
                  SharedUserData userData)
        : mOrigin(std::move(origin)), mCompletion(completion), mUserData(std::move(userData)) {}

    void start() {
        {
            const std::lock_guard lock(mMutex);
            mObservation = qv::NotificationCenter::defaultCenter().addObserverForName(
                kQVSocialSearchFinishedNotification,
                [self = shared_from_this()](const qv::Notification& notification) { self->hear(notification); });
        }
        QVBizCardManager::sharedManager()->addSocialSearchRequestFromCardProcessingResponse(mOrigin->response);
    }

  private:
    void hear(const qv::Notification& notification) {
        const auto result = QVSocialSearchResult::fromNotification(notification);
        if (!result || result->requestID != mOrigin->noteUUID) return;
        const auto observation = endObservation();
        if (!observation) return;
        mCompletion(makeHandle<qv_search_result>(std::make_shared<const SearchResultObject>(*result, *mOrigin)),
                    mUserData->get());
    }

    /// Null when it has ended already.
    qv::NotificationCenter::Token endObservation() {
        const std::lock_guard lock(mMutex);
        return std::exchange(mObservation, nullptr);
    }

    const std::shared_ptr<const ResponseObject> mOrigin;
    const qv_search_completion mCompletion;
    const SharedUserData mUserData;
    std::mutex mMutex;
    qv::NotificationCenter::Token mObservation;
};

Outcome start(const std::shared_ptr<const ResponseObject>& origin, qv_search_completion completion,
              const SharedUserData& userData) {
    if (completion == nullptr) return Outcome::invalid("There is no completion to call.");
    if (!origin->noteUUID || !origin->response->contact()) {
        return Outcome::invalid("The response has no contact, because no note was wanted or none could be made.");
    }
    const auto search = std::make_shared<PendingSearch>(origin, completion, userData);
    // The library's searches belong to the main thread, and a host that has not pumped yet has not said which that is.
    qv::MainQueue::executor()->dispatchAsync([search] { search->start(); });
    return {};
}

}  // namespace

qv_status qv_search_start(const qv_response* response, qv_search_completion completion, void* user_data,
                          qv_release_function release, qv_error** error) {
    return reported(error, [&] {
        const auto data = share(user_data, release);
        const auto origin = objectOf(response);
        return origin ? start(origin, completion, data) : deadHandle();
    });
}
