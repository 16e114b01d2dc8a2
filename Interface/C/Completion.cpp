#include "Completion.h"

#include "Handles.h"
#include "QVPlatform/MainQueue.h"

#include <mutex>
#include <set>
#include <utility>

namespace qvc {
namespace {

/// Those that live, for who cancels. Never destroyed: cards may be done while the process ends.
struct Living {
    std::mutex mutex;
    std::set<Completion*> completions;
};

Living& living() {
    static auto* const shared = new Living;
    return *shared;
}

}  // namespace

Completion::Completion(std::string noteUUID, qv_completion function, SharedUserData userData,
                       std::vector<CardPicture> pictures, bool comesOnMainThread)
    : mNoteUUID(std::move(noteUUID)),
      mFunction(function),
      mUserData(std::move(userData)),
      mPictures(std::move(pictures)),
      mComesOnMainThread(comesOnMainThread) {
    const std::lock_guard lock(living().mutex);
    living().completions.insert(this);
}

/// The user data goes after this, outside of the lock: its release may call the library.
Completion::~Completion() {
    const std::lock_guard lock(living().mutex);
    living().completions.erase(this);
}

void Completion::cancel(const std::string& noteUUID) {
    const std::lock_guard lock(living().mutex);
    for (Completion* const completion : living().completions) {
        if (completion->mNoteUUID == noteUUID) completion->mIsCancelled = true;
    }
}

void Completion::deliver(const std::shared_ptr<QVCardProcessingResponse>& response) const {
    if (mIsCancelled) return;
    const auto object = ResponseObject::make(response, mPictures);
    if (!mComesOnMainThread) return call(object);
    qv::MainQueue::executor()->dispatchAsync([self = shared_from_this(), object] { self->call(object); });
}

void Completion::call(const std::shared_ptr<const ResponseObject>& object) const {
    if (!mIsCancelled) mFunction(makeHandle<qv_response>(object), mUserData->get());
}

}  // namespace qvc
