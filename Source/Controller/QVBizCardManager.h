#pragma once

#include "QVCardScan/QVCardProcessingRequest.h"
#include "QVCardScan/QVCardProcessingResponse.h"
#include "QVCardScan/QVContactNoteDataSource.h"
#include "QVPlatform/Atomic.h"
#include "QVPlatform/Error.h"
#include "QVPlatform/Export.h"
#include "QVPlatform/Object.h"
#include "QVPlatform/OperationQueue.h"
#include "QVSocialSearch/QVSocialProfile.h"
#include "QVSocialSearch/QVSocialSearchRequest.h"
#include "QVSocialSearch/QVSocialSearchResponse.h"

#include <any>
#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

class QVCardProcessingOperation;

/// The framework's front object: holds the host's configuration and runs its requests, at most three at once. The host
/// calls it from one thread, normally its main thread; completion blocks come on threads of the queue. Other threads do
/// no harm: two that add the same note at the same moment may both succeed, that is all.
///
/// Completion blocks and the data source may call the manager, cancel, add requests, and let the manager go. What they
/// throw is caught and logged; nothing is thrown to the host. As long as one of them has not returned, it holds one of
/// the three places: where three block for ever, nothing is read any more, so none may wait for another request.
class QV_EXPORT QVBizCardManager : public qv::Object {
  public:
    /// Gets what became of a request; on a background thread.
    using Completion = std::function<void(std::shared_ptr<QVCardProcessingResponse> response)>;
    /// The record of one social search; never changes. Its values: the request's id (`std::string`), the contact
    /// (`std::shared_ptr<QVVeltoContact>`) and when it was asked for (`std::chrono::system_clock::time_point`).
    using RequestInfo = std::shared_ptr<const qv::Dictionary>;
    /// Records by request id, each a `RequestInfo`.
    using RequestMap = std::shared_ptr<std::map<std::string, std::any>>;

    /// The process's manager, made on the first call with its queue and a search time-out of 4 seconds; never
    /// destroyed.
    static std::shared_ptr<QVBizCardManager> sharedManager();

    /// `init` A manager without a queue and with a search time-out of 0.
    QVBizCardManager();
    ~QVBizCardManager() override;

    /// `setupOperationQueue` Makes the queue, for three operations at once, and sets the search time-out to 4 seconds.
    void setupOperationQueue();
    /// `cleanUpOperationQueue` Cancels what waits or runs and lets the queue go; without one, requests are not run.
    /// Does not wait: what runs goes on to its end unseen. A request that another thread adds meanwhile may still run.
    void cleanUpOperationQueue();

    /// `addRequest:completion:` Queues one card. A request that is refused (see `canWeAddRequestToQueue`) is logged and
    /// never completed. The completion is required; it is called once, on a background thread, unless the request was
    /// cancelled. Its response is null when the operation made none: without a token, or where memory ran out.
    void addRequest(std::shared_ptr<QVCardProcessingRequest> request, Completion completion);

    /// `cancelRequestWithIDString:` Cancels every queued operation of that note that has not finished.
    void cancelRequestWithIDString(const QVString& idString);

    /// `canWeAddRequestToQueue:` Whether the request has a note UUID, an image, and is not in the queue already; logs
    /// why not. Two threads that ask and add at the same moment may both succeed.
    bool canWeAddRequestToQueue(const std::shared_ptr<QVCardProcessingRequest>& request) const;

    /// `canStartLinkedInSearchForCardProcessingResponse:` Whether there is a response, a key and a secret (be they
    /// empty).
    bool canStartLinkedInSearchForCardProcessingResponse(
        const std::shared_ptr<QVCardProcessingResponse>& response) const;

    /// `addSocialSearchRequestFromCardProcessingResponse:` Looks the card's person up. Its one outcome, the time-out
    /// included, comes as `kQVSocialSearchFinishedNotification` on the main executor; where a search cannot start, as
    /// the time-out. It never comes inside this call, unless a search manager of the host's own answers there. An
    /// answer merges what was found into the response's contact. A second request for the same note replaces the first.
    /// Call it on the main thread. Null does nothing; a response without `originalNoteUUID` or `contact` is a failed
    /// assertion, and nothing happens.
    void addSocialSearchRequestFromCardProcessingResponse(const std::shared_ptr<QVCardProcessingResponse>& response);

    /// `startLinkedInSearchFromCardProcessingResponse:` Starts the search and sets the response's
    /// `willStartLinkedInSearch`; does nothing when `canStartLinkedInSearchForCardProcessingResponse` says no.
    void startLinkedInSearchFromCardProcessingResponse(const std::shared_ptr<QVCardProcessingResponse>& response);

    /// `searchRequestFromCardProcessingResponse:` A search by the card's first e-mail address; null when the card has
    /// none, or an empty one first.
    std::shared_ptr<QVSocialSearchRequest> searchRequestFromCardProcessingResponse(
        const std::shared_ptr<QVCardProcessingResponse>& response) const;

    /// `socialSearchRequestInfoWithID:` The record of a search that waits for its answer; null when there is none.
    RequestInfo socialSearchRequestInfoWithID(const QVString& requestID) const;

    /// `sendSocialSearchFinishedNotification:forRequestInfo:` Merges the profile into the record's contact, writes its
    /// note anew and announces both. A null profile changes nothing in the contact. Needs nothing of the manager.
    static void sendSocialSearchFinishedNotification(const std::shared_ptr<QVSocialProfile>& profile,
                                                     const RequestInfo& forRequestInfo);
    /// `sendSocialSearchNotFoundNotificationForRequestInfo:`
    static void sendSocialSearchNotFoundNotificationForRequestInfo(const RequestInfo& requestInfo);
    /// `sendSocialSearchTimeoutNotificationForRequestInfo:`
    static void sendSocialSearchTimeoutNotificationForRequestInfo(const RequestInfo& requestInfo);

    /// Held without ownership, and kept alive while it is asked: one that the host lets go meanwhile ends on the queue
    /// thread that asks it. Requests ask the one that was set when they were added, if it is still there.
    std::shared_ptr<QVContactNoteDataSource> contactNoteDataSource() const {
        return mContactNoteDataSource.load().lock();
    }
    void setContactNoteDataSource(const std::shared_ptr<QVContactNoteDataSource>& contactNoteDataSource) {
        mContactNoteDataSource.store(contactNoteDataSource);
    }

    /// The recognition server's address, as text. Absent or not an address: requests answer with error 1.
    QVString serverURL() const { return mServerURL.load(); }
    void setServerURL(QVString serverURL) { mServerURL.store(std::move(serverURL)); }

    /// What allows a social search; only their presence counts.
    QVString linkedInKey() const { return mSearchCredentials->key.load(); }
    void setLinkedInKey(QVString linkedInKey) { mSearchCredentials->key.store(std::move(linkedInKey)); }
    /// The other half of what allows a social search; only its presence counts.
    QVString linkedInSecret() const { return mSearchCredentials->secret.load(); }
    void setLinkedInSecret(QVString linkedInSecret) { mSearchCredentials->secret.store(std::move(linkedInSecret)); }

    /// Seconds until a social search counts as unanswered.
    double searchTimeOut() const { return mSearchTimeOut; }
    void setSearchTimeOut(double searchTimeOut) { mSearchTimeOut = searchTimeOut; }

    /// The social searches that wait for their answer, by request id. Shared; only the manager's own look-ups are
    /// guarded against each other, so a host looks into it on the main thread.
    RequestMap socialSearchRequestMap() const { return mSocialSearches->requestMap.load(); }
    void setSocialSearchRequestMap(RequestMap map) { mSocialSearches->requestMap.store(std::move(map)); }

  private:
    /// Apart from the manager, because completion steps need them and may outlive it.
    struct SearchCredentials {
        qv::Atomic<QVString> key;
        qv::Atomic<QVString> secret;
        bool allowSearchFor(const std::shared_ptr<QVCardProcessingResponse>& response) const;
    };

    /// Apart from the manager for the same reason: every search is announced, whether or not the manager lives.
    struct SocialSearches {
        qv::Atomic<RequestMap> requestMap{std::make_shared<std::map<std::string, std::any>>()};
        /// Held around each look into the map: a host's executor may run work on several threads.
        mutable std::mutex mutex;
        void insert(const std::string& requestID, RequestInfo record) const;
        RequestInfo find(const QVString& requestID) const;
        RequestInfo remove(const QVString& requestID) const;
        void complete(const std::shared_ptr<QVSocialSearchResponse>& response) const;
        void timeOut(const std::string& requestID) const;
    };

    static void completeOperation(const QVCardProcessingOperation& operation, const SearchCredentials& credentials,
                                  const Completion& completion);
    bool isInQueue(const std::string& operationID) const;

    qv::Atomic<std::shared_ptr<qv::OperationQueue>> mCardOperationQueue;
    qv::Atomic<QVString> mServerURL;
    std::shared_ptr<SearchCredentials> mSearchCredentials = std::make_shared<SearchCredentials>();
    qv::Atomic<std::weak_ptr<QVContactNoteDataSource>> mContactNoteDataSource;
    std::shared_ptr<SocialSearches> mSocialSearches = std::make_shared<SocialSearches>();
    std::atomic<double> mSearchTimeOut{0};
};
