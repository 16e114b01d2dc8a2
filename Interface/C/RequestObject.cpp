#include "RequestObject.h"

#include "Completion.h"
#include "QVCardScan/QVBizCardManager.h"
#include "QVPlatform/MD5.h"

#include <utility>

namespace qvc {
namespace {

/// The library takes no more than two sides.
constexpr std::size_t kMaximumPictures = 2;

/// Asking whether a request is under way and adding it are two steps; nobody else may come in between.
std::mutex& addingMutex() {
    static auto* const mutex = new std::mutex;
    return *mutex;
}

}  // namespace

Outcome RequestObject::addPicture(const std::shared_ptr<qv::Image>& image, const char* hash) {
    if (!image) return {QV_UNREADABLE, "The file cannot be read."};
    if (!image->isValid()) return {QV_UNREADABLE, "This is no picture that can be read, or one that is too large."};
    Outcome outcome = checkText(hash, "picture's hash");
    if (outcome.status != QV_OK) return outcome;
    CardPicture picture{image, hash != nullptr ? hash : qv::lowerHexMD5(image->encodedData())};
    const std::lock_guard lock(mMutex);
    if (mPictures.size() == kMaximumPictures) return Outcome::invalid("A card has two sides, which are there already.");
    mPictures.push_back(std::move(picture));
    return {};
}

Outcome RequestObject::setToken(const char* token) {
    Outcome outcome = checkText(token, "token");
    const std::lock_guard lock(mMutex);
    if (outcome.status == QV_OK) mToken = textOf(token);
    return outcome;
}

Outcome RequestObject::setLanguage(const char* language) {
    Outcome outcome = checkText(language, "language");
    const std::lock_guard lock(mMutex);
    if (outcome.status == QV_OK) mLanguage = textOf(language);
    return outcome;
}

void RequestObject::setSkipsNote(bool skipsNote) {
    const std::lock_guard lock(mMutex);
    mSkipsNote = skipsNote;
}

void RequestObject::setCompletesOnMainThread(bool completesOnMainThread) {
    const std::lock_guard lock(mMutex);
    mCompletesOnMainThread = completesOnMainThread;
}

Outcome RequestObject::objectionToRunning() const {
    if (mPictures.empty()) return Outcome::invalid("The request has no picture.");
    if (!mToken) return Outcome::invalid("The request has no token.");
    return {};
}

std::shared_ptr<QVCardProcessingRequest> RequestObject::makeRequest() const {
    auto images = std::make_shared<std::vector<std::shared_ptr<qv::Image>>>();
    auto hashes = std::make_shared<std::vector<std::string>>();
    for (const CardPicture& picture : mPictures) {
        images->push_back(picture.image);
        hashes->push_back(picture.hash);
    }
    auto request = QVCardProcessingRequest::initWithNoteUUID(mNoteUUID, std::move(images), std::move(hashes), mToken,
                                                             /*processImageForOCR=*/false);
    request->setRecoLanguage(mLanguage);
    request->setSkipNoteGeneration(mSkipsNote);
    return request;
}

Outcome RequestObject::run(qv_completion completion, const SharedUserData& userData) const {
    if (completion == nullptr) return Outcome::invalid("There is no completion to call.");
    const std::lock_guard lock(mMutex);
    Outcome objection = objectionToRunning();
    if (objection.status != QV_OK) return objection;
    const auto request = makeRequest();
    const auto manager = QVBizCardManager::sharedManager();
    const std::lock_guard adding(addingMutex());
    if (!manager->canWeAddRequestToQueue(request)) return {QV_REFUSED, "A request for that note is under way."};
    const auto step = std::make_shared<Completion>(mNoteUUID, completion, userData, mPictures, mCompletesOnMainThread);
    manager->addRequest(request, [step](const auto& response) { step->deliver(response); });
    return {};
}

}  // namespace qvc
