#include "Scan/CardScan.h"

#include "QVCardScan/QVBizCardManager.h"
#include "QVCardScan/QVCardProcessingError.h"
#include "Scan/RecognisedCard.h"
#include "Support/MainWork.h"
#include "Support/Messages.h"
#include "Support/Random.h"

#include <algorithm>
#include <future>
#include <utility>

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

}  // namespace

void ScanOutcome::lookAtResponse() {
    wasGivenUp = !response;
    if (wasGivenUp) response = std::make_shared<QVCardProcessingResponse>();
    card = response->card();
    if (!card)
        card = RecognisedCard::fromResults(response->rawResultForFirstCard(), response->rawResultForSecondCard());
}

std::vector<qv::Error> ScanOutcome::errors() const {
    if (wasGivenUp) return {{std::string(kScanErrorDomain), kScanErrorGivenUp, {}}};
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
    const auto promise = std::make_shared<std::promise<ScanOutcome>>();
    const auto keep = [promise](ScanOutcome outcome) { promise->set_value(std::move(outcome)); };
    if (!start(request, access ? &*access : nullptr, keep))
        return Failure{ExitStatus::Incomplete, "The library refused the card. Run again with --verbose to see why."};
    std::future<ScanOutcome> future = promise->get_future();
    while (future.wait_for(kBetweenMainWork) != std::future_status::ready)
        runMainWork();
    ScanOutcome outcome = future.get();
    outcome.lookAtResponse();
    return outcome;
}

std::optional<std::string> CardScan::start(const ScanRequest& request, const ServerAccess* access,
                                           Completion completion) {
    const auto manager = QVBizCardManager::sharedManager();
    manager->setServerURL(access != nullptr ? QVString(access->url) : std::nullopt);
    const std::string noteUUID = Random::uuid();
    const auto made = makeRequest(request, noteUUID, access != nullptr ? QVString(access->token) : std::nullopt);
    if (!manager->canWeAddRequestToQueue(made)) return std::nullopt;
    ScanOutcome outcome;
    outcome.noteUUID = noteUUID;
    outcome.pictureCount = request.pictures.size();
    manager->addRequest(made, [outcome, completion = std::move(completion)](Response response) mutable {
        outcome.response = std::move(response);
        completion(std::move(outcome));
    });
    return noteUUID;
}

bool CardScan::connectionFailed(const ScanOutcome& outcome) {
    const std::vector<qv::Error> errors = outcome.errors();
    return std::any_of(errors.begin(), errors.end(), [](const qv::Error& error) {
        return error.domain == kQVCardProcessingErrorDomain && error.code == QVCardProcessingErrorConnectionFailed;
    });
}

}  // namespace qvhost
