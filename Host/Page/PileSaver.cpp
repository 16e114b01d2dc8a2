#include "Page/PileSaver.h"

#include "Page/CardNote.h"
#include "People/MainLoop.h"

#include <exception>
#include <utility>

namespace qvhost {

PileSaver::PileSaver(CardPile& pile, AddressBookPlace place)
    : mPile(pile), mPlace(std::move(place)), mThread([this] { work(); }) {
}

PileSaver::~PileSaver() {
    stop();
    mThread.join();
}

CardPile::Card PileSaver::save(const std::string& identifier) {
    auto card = mPile.change(identifier, [](PileCard& changed) {
        if (changed.state != PileCard::State::Done && changed.state != PileCard::State::Failed) return false;
        if (changed.saving == PileCard::Saving::UnderWay || changed.fields.empty()) return false;
        changed.saving = PileCard::Saving::UnderWay;
        changed.isChangedSinceSaving = false;
        return true;
    });
    if (!card) return nullptr;
    {
        const std::lock_guard lock(mMutex);
        mWaiting.push_back(identifier);
    }
    mChanged.notify_one();
    return card;
}

void PileSaver::stop() {
    {
        const std::lock_guard lock(mMutex);
        mIsStopped = true;
    }
    mChanged.notify_all();
}

bool PileSaver::hasEnded(std::chrono::milliseconds within) {
    std::unique_lock lock(mMutex);
    return mChanged.wait_for(lock, within, [this] { return mHasEnded; });
}

void PileSaver::work() {
    for (std::string identifier; next(identifier);)
        saveNow(identifier);
    const std::lock_guard lock(mMutex);
    mHasEnded = true;
    mChanged.notify_all();
}

bool PileSaver::next(std::string& identifier) {
    std::unique_lock lock(mMutex);
    mChanged.wait(lock, [this] { return mIsStopped || !mWaiting.empty(); });
    if (mIsStopped) return false;
    identifier = std::move(mWaiting.front());
    mWaiting.pop_front();
    return true;
}

void PileSaver::saveNow(const std::string& identifier) {
    const CardPile::Card card = mPile.find(identifier);
    if (!card) return;
    SaveOutcome outcome;
    try {
        MainLoop loop;
        outcome = ContactSaver(loop, mPlace).save(CardNote::contact(*card), nullptr);
    } catch (const std::exception& exception) {
        outcome.failure = exception.what();
    }
    mPile.change(identifier, [&](PileCard& changed) {
        changed.saving = outcome.failure ? PileCard::Saving::Failed : PileCard::Saving::Done;
        changed.saved = std::move(outcome);
        return true;
    });
}

}  // namespace qvhost
