#pragma once

#include "Page/ChangeBell.h"
#include "Page/PileCard.h"

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace qvhost {

/// The cards on the page, in the order they came; the same for everybody who looks. Any thread may call. What is handed
/// out never changes: a change makes a new card of the old one.
class CardPile {
  public:
    using Card = std::shared_ptr<const PileCard>;
    /// Changes a card; false leaves it as it was.
    using Change = std::function<bool(PileCard& card)>;

    static constexpr std::size_t kMaximumCards = 500;

    struct View {
        std::vector<Card> cards;
        /// The change that this shows.
        std::uint64_t version = 0;
        /// Of the cards that came since nothing was waiting: how many are through, and how many there are.
        std::size_t done = 0;
        std::size_t total = 0;
    };

    explicit CardPile(PictureShelf& shelf) : mShelf(shelf) {}

    View view() const;
    /// Null when there is none, or it was removed.
    Card find(const std::string& identifier) const;

    /// A new card that waits to be read; empty when there are too many.
    std::string add(std::vector<ShelvedPicture> pictures);
    /// The card as it is then; null when there is none, or `how` refused.
    Card change(const std::string& identifier, const Change& how);
    /// Has the card read again, with these pictures. What was corrected is lost.
    Card readAgain(const std::string& identifier, const std::vector<ShelvedPicture>& pictures);
    /// Takes a card away; it can be put back until a few others were taken away. False when there is none.
    bool remove(const std::string& identifier);
    bool restore(const std::string& identifier);
    /// Makes the front of one card the back of another, which is read again.
    Card join(const std::string& front, const std::string& back);
    /// Makes a card of its own of the back.
    Card split(const std::string& identifier);

    /// For the one that reads: the next card that waits; it waits for one. Null once the pile is stopped.
    Card takeWaiting();
    void stop();

    ChangeBell& bell() { return mBell; }
    const PictureShelf& shelf() const { return mShelf; }

  private:
    using Cards = std::vector<Card>;

    Cards::iterator position(Cards& cards, const std::string& identifier);
    Card changeHere(const std::string& identifier, const Change& how);
    std::string addHere(std::vector<ShelvedPicture> pictures, Cards::iterator where);
    void beginReading(PileCard& card, std::vector<ShelvedPicture> pictures);
    /// What is never put back gives its room to others.
    void dropOldest();
    void countReading();

    PictureShelf& mShelf;
    mutable std::mutex mMutex;
    std::condition_variable mChanged;
    ChangeBell mBell;
    Cards mCards;
    Cards mRemoved;
    std::uint64_t mLastIdentifier = 0;
    std::size_t mTotal = 0;
    bool mIsStopped = false;
};

}  // namespace qvhost
