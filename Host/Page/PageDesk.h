#pragma once

#include "Page/CardPile.h"
#include "Page/PageGate.h"
#include "Page/PageHandler.h"
#include "Page/PileSaver.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace qvhost {

/// Answers what the page asks for: its files, the cards, and what is to be done with them.
class PageDesk : public PageHandler {
  public:
    /// `recogniser`: in words, where the pictures go; empty when they stay on this machine.
    PageDesk(PageGate gate, CardPile& pile, PictureShelf& shelf, PileSaver& saver, std::string recogniser = "");

    std::optional<unsigned> refusal(const PageRequest& head) const override;
    std::size_t bodyLimit(const PageRequest& head) const override;
    void handle(const PageRequest& request, const PageAnswering& answer) override;
    void tick() override;
    void stop() override;

  private:
    /// The parts of a path below "api/".
    using Path = std::vector<std::string>;

    PageAnswer enter() const;
    PageAnswer file(const PageRequest& request) const;
    void list(const PageRequest& request, const PageAnswering& answer);
    PageAnswer listNow() const;
    PageAnswer answerFor(const PageRequest& request, const Path& path);
    PageAnswer onPictures(const PageRequest& request, const Path& path);
    PageAnswer onCards(const PageRequest& request, const Path& path);
    PageAnswer onCard(const PageRequest& request, const Path& path);
    PageAnswer onFields(const PageRequest& request, const Path& path);
    PageAnswer act(const PageRequest& request, const Path& path);
    PageAnswer show(const Path& path) const;
    PageAnswer addCard(const PageRequest& request);
    PageAnswer everything() const;

    const PageGate mGate;
    CardPile& mPile;
    PictureShelf& mShelf;
    PileSaver& mSaver;
    const std::string mRecogniser;
    /// Tells this run of the program from others.
    const std::string mRun;
};

}  // namespace qvhost
