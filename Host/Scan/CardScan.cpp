#include "Scan/CardScan.h"

#include "QVCardScan/QVBizCardManager.h"
#include "QVCardScan/QVCardProcessingError.h"
#include "Scan/RecognisedCard.h"
#include "Support/Messages.h"
#include "Support/Random.h"

#include <algorithm>
#include <future>

namespace qvhost {
namespace {

using Response = std::shared_ptr<QVCardProcessingResponse>;

std::shared_ptr<QVCardProcessingRequest> makeRequest(const ScanRequest& wanted, const std::string& noteUUID,
                                                     const QVString& token) {
    auto images = std::make_shared<std::vector<std::shared_ptr<qv::Image>>>();
    auto hashes = std::make_shared<std::vector<std::string>>();
    for (const CardPicture& picture : wanted.pictures) {
        images->push_back(picture.image);
        hashes->push_back(picture.hash);
    }
    auto request =
        QVCardProcessingRequest::initWithNoteUUID(noteUUID, images, hashes, token, /*processImageForOCR=*/false);
    request->setRecoLanguage(wanted.language);
    request->setSkipNoteGeneration(wanted.skipNote);
    return request;
}

/// Blocks until the manager answers; null when it refuses the request.
Response process(const std::shared_ptr<QVCardProcessingRequest>& request) {
    const auto manager = QVBizCardManager::sharedManager();
    if (!manager->canWeAddRequestToQueue(request)) return nullptr;
    const auto promise = std::make_shared<std::promise<Response>>();
    manager->addRequest(request, [promise](Response response) { promise->set_value(std::move(response)); });
    return promise->get_future().get();
}

bool connectionFailed(const ScanOutcome& outcome) {
    const std::vector<qv::Error> errors = outcome.errors();
    return std::any_of(errors.begin(), errors.end(), [](const qv::Error& error) {
        return error.domain == kQVCardProcessingErrorDomain && error.code == QVCardProcessingErrorConnectionFailed;
    });
}

}  // namespace

std::vector<qv::Error> ScanOutcome::errors() const {
    const QVErrorArray errors = response->errors();
    return errors ? *errors : std::vector<qv::Error>();
}

std::int64_t ScanOutcome::rotation() const {
    const QVRotationMap map = response->imageRotationMap();
    return map && !map->empty() ? map->begin()->second : 0;
}

bool ScanOutcome::hasFields() const {
    return card && card->fields() && !card->fields()->empty();
}

bool ScanOutcome::leftBackUnread() const {
    return pictureCount > 1 && errors().empty() && !response->rawResultForSecondCard();
}

Result<ScanOutcome> CardScan::run(const ScanRequest& request) {
    Result<ScanOutcome> outcome = runOnce(request);
    if (!outcome || !connectionFailed(*outcome) || !mServer.hasEnded()) return outcome;
    Messages::say("The recognition server ended while it read the card; starting it again.");
    return runOnce(request);
}

Result<ScanOutcome> CardScan::runOnce(const ScanRequest& request) {
    const Result<ServerAccess> access = mServer.access();
    // Without a server the library itself says so, in the response.
    if (!access) Messages::say(access.failure().message);
    const auto manager = QVBizCardManager::sharedManager();
    manager->setServerURL(access ? QVString(access->url) : std::nullopt);
    ScanOutcome outcome;
    outcome.noteUUID = Random::uuid();
    outcome.pictureCount = request.pictures.size();
    outcome.response = process(makeRequest(request, outcome.noteUUID, access ? QVString(access->token) : std::nullopt));
    if (!outcome.response) {
        return Failure{ExitStatus::Incomplete, "The library refused the card. Run again with --verbose to see why."};
    }
    outcome.card = outcome.response->card();
    if (!outcome.card) {
        outcome.card = RecognisedCard::fromResults(outcome.response->rawResultForFirstCard(),
                                                   outcome.response->rawResultForSecondCard());
    }
    return outcome;
}

}  // namespace qvhost
