#include "QVCardScan/QVCardProcessingOperation.h"

#include "Model/QVCardProcessingResponse+Write.h"
#include "Operation/QVCardProcessingPipeline.h"
#include "QVCardScan/QVCardProcessingError.h"
#include "QVPlatform/AssertionHandler.h"
#include "QVPlatform/Log.h"

namespace {

/// The line that the assertion has always been reported under; hosts' crash reports are grouped by it.
constexpr int kTokenAssertionLine = 155;

std::shared_ptr<QVCardProcessingResponse> responseWithoutServerURL() {
    auto response = std::make_shared<QVCardProcessingResponse>();
    auto errors = std::make_shared<std::vector<qv::Error>>();
    errors->push_back({std::string(kQVCardProcessingErrorDomain), QVCardProcessingErrorNoServerURL, {}});
    setErrors(*response, errors);
    return response;
}

void assertTokenIsThere() {
    qv::AssertionHandler::handleFailure({.description = "Authentication token cannot be nil!",
                                         .function = "main",
                                         .file = "QVCardProcessingOperation",
                                         .line = kTokenAssertionLine});
}

}  // namespace

std::shared_ptr<QVCardProcessingOperation> QVCardProcessingOperation::initWithRequest(
    std::shared_ptr<QVCardProcessingRequest> request, std::optional<qv::URL> serverURL) {
    return std::shared_ptr<QVCardProcessingOperation>(
        new QVCardProcessingOperation(std::move(request), std::move(serverURL)));
}

QVCardProcessingOperation::QVCardProcessingOperation(std::shared_ptr<QVCardProcessingRequest> request,
                                                     std::optional<qv::URL> serverURL)
    : mRequest(std::move(request)), mServerURL(std::move(serverURL)) {
}

QVString QVCardProcessingOperation::operationID() const {
    const auto request = mRequest.load();
    return request ? request->noteUUID() : std::nullopt;
}

void QVCardProcessingOperation::main() {
    if (isCancelled()) return;
    qv::Log::write("Performing operation with ID: %@", operationID());
    const auto errors = std::make_shared<std::vector<qv::Error>>();
    if (!mServerURL) {
        qv::Log::write("<ERROR> CardScan server url is not set!");
        mResponse.store(responseWithoutServerURL());
        return;
    }
    const auto request = mRequest.load();
    const QVString token = request ? request->authToken() : std::nullopt;
    if (!token) {
        assertTokenIsThere();
        return;
    }
    QVCardProcessingPipeline(*this, request, *token, errors).run([this](auto response) { mResponse.store(response); });
}
