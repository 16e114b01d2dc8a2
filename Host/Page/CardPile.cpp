#include "Page/CardPile.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace qvhost {
namespace {

constexpr std::size_t kKeptRemoved = 20;

bool isOpen(const PileCard& card) {
    return card.state != PileCard::State::Done && card.state != PileCard::State::Failed;
}

bool isUnderWay(const CardPile::Card& card) {
    return isOpen(*card);
}

}  // namespace

CardPile::View CardPile::view() const {
    const std::lock_guard lock(mMutex);
    View view{mCards, mBell.count(), 0, mTotal};
    const auto open = static_cast<std::size_t>(std::count_if(mCards.begin(), mCards.end(), isUnderWay));
    view.done = view.total - std::min(open, view.total);
    return view;
}

CardPile::Card CardPile::find(const std::string& identifier) const {
    const std::lock_guard lock(mMutex);
    const auto found =
        std::find_if(mCards.begin(), mCards.end(), [&](const Card& card) { return card->identifier == identifier; });
    return found != mCards.end() ? *found : nullptr;
}

CardPile::Cards::iterator CardPile::position(Cards& cards, const std::string& identifier) {
    return std::find_if(cards.begin(), cards.end(), [&](const Card& card) { return card->identifier == identifier; });
}

std::string CardPile::add(std::vector<ShelvedPicture> pictures) {
    std::string identifier;
    {
        const std::lock_guard lock(mMutex);
        if (mCards.size() >= kMaximumCards) return "";
        identifier = addHere(std::move(pictures), mCards.end());
    }
    mChanged.notify_one();
    mBell.ring();
    return identifier;
}

std::string CardPile::addHere(std::vector<ShelvedPicture> pictures, Cards::iterator where) {
    auto card = std::make_shared<PileCard>();
    card->identifier = std::to_string(++mLastIdentifier);
    std::string identifier = card->identifier;
    countReading();
    beginReading(*card, std::move(pictures));
    mCards.insert(where, std::move(card));
    return identifier;
}

/// To be called before a card begins to wait.
void CardPile::countReading() {
    if (std::none_of(mCards.begin(), mCards.end(), isUnderWay)) mTotal = 0;
    ++mTotal;
}

void CardPile::beginReading(PileCard& card, std::vector<ShelvedPicture> pictures) {
    PileCard fresh;
    fresh.identifier = card.identifier;
    fresh.revision = card.revision + 1;
    fresh.attempt = card.attempt + 1;
    fresh.pictures = std::move(pictures);
    card = std::move(fresh);
}

CardPile::Card CardPile::change(const std::string& identifier, const Change& how) {
    Card changed;
    {
        const std::lock_guard lock(mMutex);
        changed = changeHere(identifier, how);
    }
    if (changed) mBell.ring();
    return changed;
}

CardPile::Card CardPile::changeHere(const std::string& identifier, const Change& how) {
    const auto found = position(mCards, identifier);
    if (found == mCards.end()) return nullptr;
    auto copy = std::make_shared<PileCard>(**found);
    if (!how(*copy)) return nullptr;
    copy->revision = (*found)->revision + 1;
    *found = std::move(copy);
    return *found;
}

CardPile::Card CardPile::readAgain(const std::string& identifier, const std::vector<ShelvedPicture>& pictures) {
    Card card = change(identifier, [&](PileCard& changed) {
        if (!isOpen(changed)) countReading();
        beginReading(changed, pictures);
        return true;
    });
    mChanged.notify_one();
    return card;
}

bool CardPile::remove(const std::string& identifier) {
    {
        const std::lock_guard lock(mMutex);
        const auto found = position(mCards, identifier);
        if (found == mCards.end()) return false;
        if (isUnderWay(*found) && mTotal > 0) --mTotal;
        mRemoved.push_back(*found);
        mCards.erase(found);
        dropOldest();
    }
    mBell.ring();
    return true;
}

void CardPile::dropOldest() {
    if (mRemoved.size() <= kKeptRemoved) return;
    for (const ShelvedPicture& picture : mRemoved.front()->pictures)
        mShelf.remove(picture.identifier);
    mRemoved.erase(mRemoved.begin());
}

bool CardPile::restore(const std::string& identifier) {
    {
        const std::lock_guard lock(mMutex);
        const auto found = position(mRemoved, identifier);
        if (found == mRemoved.end()) return false;
        auto card = std::make_shared<PileCard>(**found);
        mRemoved.erase(found);
        if (isUnderWay(card)) {
            countReading();
            // Whoever read it has thrown the result away.
            beginReading(*card, std::vector(card->pictures));
        }
        const auto where = std::find_if(mCards.begin(), mCards.end(), [&](const Card& other) {
            return std::stoull(other->identifier) > std::stoull(card->identifier);
        });
        mCards.insert(where, std::move(card));
    }
    mChanged.notify_one();
    mBell.ring();
    return true;
}

CardPile::Card CardPile::join(const std::string& front, const std::string& back) {
    {
        const std::lock_guard lock(mMutex);
        const auto first = position(mCards, front);
        const auto second = position(mCards, back);
        if (first == mCards.end() || second == mCards.end() || first == second) return nullptr;
        if ((*first)->pictures.size() != 1 || (*second)->pictures.size() != 1) return nullptr;
        std::vector<ShelvedPicture> pictures{(*first)->pictures.front(), (*second)->pictures.front()};
        if (isUnderWay(*second) && mTotal > 0) --mTotal;
        auto joined = std::make_shared<PileCard>(**first);
        if (!isUnderWay(*first)) countReading();
        beginReading(*joined, std::move(pictures));
        *first = std::move(joined);
        mCards.erase(second);
    }
    mChanged.notify_one();
    mBell.ring();
    return find(front);
}

CardPile::Card CardPile::split(const std::string& identifier) {
    {
        const std::lock_guard lock(mMutex);
        auto found = position(mCards, identifier);
        if (found == mCards.end() || (*found)->pictures.size() != 2 || mCards.size() >= kMaximumCards) return nullptr;
        const std::vector<ShelvedPicture> pictures = (*found)->pictures;
        auto alone = std::make_shared<PileCard>(**found);
        if (!isUnderWay(*found)) countReading();
        beginReading(*alone, {pictures[0]});
        *found = std::move(alone);
        addHere({pictures[1]}, std::next(found));
    }
    mChanged.notify_one();
    mBell.ring();
    return find(identifier);
}

CardPile::Card CardPile::takeWaiting() {
    Card taken;
    {
        std::unique_lock lock(mMutex);
        const auto waits = [](const Card& card) { return card->state == PileCard::State::Waiting; };
        Cards::iterator next;
        mChanged.wait(lock, [&] {
            next = std::find_if(mCards.begin(), mCards.end(), waits);
            return mIsStopped || next != mCards.end();
        });
        if (mIsStopped) return nullptr;
        taken = changeHere((*next)->identifier, [](PileCard& card) {
            card.state = PileCard::State::Starting;
            return true;
        });
    }
    mBell.ring();
    return taken;
}

void CardPile::stop() {
    {
        const std::lock_guard lock(mMutex);
        mIsStopped = true;
    }
    mChanged.notify_all();
    mBell.stop();
}

}  // namespace qvhost
