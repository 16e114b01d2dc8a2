#include "RequestObject.h"

#include "Completion.h"
#include "QVCardScan/QVBizCardManager.h"
#include "QVPlatform/Log.h"
#include "QVPlatform/MD5.h"

#include <set>
#include <utility>

namespace qvc {
namespace {

/// The library takes no more than two sides.
constexpr std::size_t kMaximumPictures = 2;

/// Notes whose requests are being added. Never destroyed: threads may still add while the process ends.
struct Adding {
    std::mutex mutex;
    std::set<std::string> notes;
};

Adding& adding() {
    static auto* const shared = new Adding;
    return *shared;
}

/// Asking whether a request is under way and adding it are two steps; for that note nobody else may come in between.
/// No lock is held meanwhile, because both steps tell the host's log, and that may do anything.
class Turn {
  public:
    explicit Turn(std::string note) : mNote(std::move(note)) {
        const std::lock_guard lock(adding().mutex);
        mIsOurs = adding().notes.insert(mNote).second;
    }
    ~Turn() {
        const std::lock_guard lock(adding().mutex);
        if (mIsOurs) adding().notes.erase(mNote);
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    bool isOurs() const { return mIsOurs; }

  private:
    const std::string mNote;
    bool mIsOurs = false;
};

bool isUnderWay(const Turn& turn, const std::shared_ptr<QVCardProcessingRequest>& request) {
    if (turn.isOurs()) return !QVBizCardManager::sharedManager()->canWeAddRequestToQueue(request);
    qv::Log::write("<WARNING> We already added the same request! Ignored.");
    return true;
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
    std::unique_lock lock(mMutex);
    Outcome objection = objectionToRunning();
    if (objection.status != QV_OK) return objection;
    const auto request = makeRequest();
    const auto step = std::make_shared<Completion>(mNoteUUID, completion, userData, mPictures, mCompletesOnMainThread);
    lock.unlock();
    const Turn turn(mNoteUUID);
    if (isUnderWay(turn, request)) return {QV_REFUSED, "A request for that note is under way."};
    QVBizCardManager::sharedManager()->addRequest(request, [step](const auto& response) { step->deliver(response); });
    return {};
}

}  // namespace qvc
