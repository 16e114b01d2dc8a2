#pragma once

#include "QVCardScan/QVCardProcessingRequest.h"
#include "QVCardScan/QVCardProcessingResponse.h"
#include "QVCardScan/QVContactNoteDataSource.h"
#include "QVPlatform/Atomic.h"
#include "QVPlatform/Export.h"
#include "QVPlatform/Object.h"
#include "QVPlatform/OperationQueue.h"

#include <any>
#include <functional>
#include <map>
#include <memory>
#include <string>

/// The framework's front object: holds the host's configuration and runs its requests, at most three at once. The host
/// calls it from one thread, normally its main thread; completion blocks come on threads of the queue.
class QV_EXPORT QVBizCardManager : public qv::Object {
  public:
    using Completion = std::function<void(std::shared_ptr<QVCardProcessingResponse> response)>;
    using RequestMap = std::shared_ptr<std::map<std::string, std::any>>;

    /// The process's manager, made on the first call with its queue and a search time-out of 4 seconds; never
    /// destroyed.
    static std::shared_ptr<QVBizCardManager> sharedManager();

    /// `init` A manager without a queue and with a search time-out of 0.
    QVBizCardManager();
    ~QVBizCardManager() override;

    void setupOperationQueue();
    void cleanUpOperationQueue();

    /// `addRequest:completion:` Queues one card. A request that is refused (see `canWeAddRequestToQueue`) is logged and
    /// never completed. The completion is required; it is called once, on a background thread, unless the request was
    /// cancelled.
    void addRequest(std::shared_ptr<QVCardProcessingRequest> request, Completion completion);

    /// `cancelRequestWithIDString:` Cancels every queued operation of that note that has not finished.
    void cancelRequestWithIDString(const QVString& idString);

    bool canWeAddRequestToQueue(const std::shared_ptr<QVCardProcessingRequest>& request) const;
    bool canStartLinkedInSearchForCardProcessingResponse(
        const std::shared_ptr<QVCardProcessingResponse>& response) const;
};
