#include "QVCardScan/QVBizCardManager.h"

#include "QVCardScan/QVCardProcessingOperation.h"
#include "QVPlatform/AssertionHandler.h"
#include "QVPlatform/Guarded.h"
#include "QVPlatform/Log.h"

#include <algorithm>

namespace {

constexpr std::size_t kMaximumConcurrentOperations = 3;
constexpr double kDefaultSearchTimeOut = 4.0;

const QVCardProcessingOperation& cardOperation(const std::shared_ptr<qv::Operation>& operation) {
    return static_cast<const QVCardProcessingOperation&>(*operation);
}

bool refuse(std::string_view warning) {
    qv::Log::write(warning);
    return false;
}

void assertCompletionIsThere() {
    qv::AssertionHandler::handleFailure({.description = "Completion block cannot be nil!",
                                         .function = "addRequest:completion:",
                                         .file = "QVBizCardManager",
                                         .line = __LINE__});
}

}  // namespace

std::shared_ptr<QVBizCardManager> QVBizCardManager::sharedManager() {
    // Never destroyed: operations may still run when the process's other globals are gone.
    static const auto* const manager = [] {
        auto* const made = new std::shared_ptr<QVBizCardManager>(std::make_shared<QVBizCardManager>());
        (*made)->setupOperationQueue();
        return made;
    }();
    return *manager;
}

QVBizCardManager::QVBizCardManager() = default;

QVBizCardManager::~QVBizCardManager() {
    cleanUpOperationQueue();
}

void QVBizCardManager::setupOperationQueue() {
    mCardOperationQueue.store(std::make_shared<qv::OperationQueue>(kMaximumConcurrentOperations));
    mSearchTimeOut = kDefaultSearchTimeOut;
}

void QVBizCardManager::cleanUpOperationQueue() {
    const auto queue = mCardOperationQueue.load();
    if (!queue) return;
    queue->cancelAllOperations();
    mCardOperationQueue.store(nullptr);
}

void QVBizCardManager::addRequest(std::shared_ptr<QVCardProcessingRequest> request, Completion completion) {
    if (!canWeAddRequestToQueue(request)) return;
    if (!completion) {
        assertCompletionIsThere();
        return;
    }
    const auto url = qv::URL::URLWithString(serverURL().value_or(""));
    const auto operation = QVCardProcessingOperation::initWithRequest(std::move(request), url);
    operation->setContactNoteDataSource(contactNoteDataSource());
    operation->setCompletionBlock([weakOperation = std::weak_ptr(operation), credentials = mSearchCredentials,
                                   completion = std::move(completion)] {
        if (const auto finished = weakOperation.lock()) completeOperation(*finished, *credentials, completion);
    });
    if (const auto queue = mCardOperationQueue.load()) queue->addOperation(operation);
}

void QVBizCardManager::completeOperation(const QVCardProcessingOperation& operation,
                                         const SearchCredentials& credentials, const Completion& completion) {
    if (operation.isCancelled()) {
        qv::Log::write("<INFO> Operation with ID: %@ is cancelled!", operation.operationID());
        return;
    }
    const auto response = operation.response();
    // A host that waits for its card is told of its end also when there is no memory left for these.
    qv::runGuarded("the end of an operation", [&] {
        qv::Log::write("<INFO> Operation with ID: %@ completed!", operation.operationID());
        if (credentials.allowSearchFor(response)) response->setWillStartLinkedInSearch(true);
    });
    completion(response);
}

void QVBizCardManager::cancelRequestWithIDString(const QVString& idString) {
    const auto queue = mCardOperationQueue.load();
    if (!idString || !queue) return;
    for (const auto& operation : queue->operations()) {
        if (cardOperation(operation).operationID() == idString && !operation->isFinished()) operation->cancel();
    }
}

bool QVBizCardManager::canWeAddRequestToQueue(const std::shared_ptr<QVCardProcessingRequest>& request) const {
    const QVString noteUUID = request ? request->noteUUID() : std::nullopt;
    if (!noteUUID) return refuse("<WARNING> The request doesn't have a note UUID! Ignored.");
    const auto images = request->cardImages();
    if (!images || images->empty()) return refuse("<WARNING> The request doesn't contain any images! Ignored.");
    if (isInQueue(*noteUUID)) return refuse("<WARNING> We already added the same request! Ignored.");
    return true;
}

bool QVBizCardManager::isInQueue(const std::string& operationID) const {
    const auto queue = mCardOperationQueue.load();
    if (!queue) return false;
    const auto operations = queue->operations();
    return std::any_of(operations.begin(), operations.end(),
                       [&](const auto& operation) { return cardOperation(operation).operationID() == operationID; });
}

bool QVBizCardManager::canStartLinkedInSearchForCardProcessingResponse(
    const std::shared_ptr<QVCardProcessingResponse>& response) const {
    return mSearchCredentials->allowSearchFor(response);
}

bool QVBizCardManager::SearchCredentials::allowSearchFor(
    const std::shared_ptr<QVCardProcessingResponse>& response) const {
    return response && key.load() && secret.load();
}
