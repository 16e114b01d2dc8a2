#include "Page/PileReader.h"

#include "Output/ErrorText.h"
#include "Output/ScanRemarks.h"
#include "Page/ReadFields.h"

#include <exception>
#include <utility>

namespace qvhost {

PileReader::PileReader(CardPile& pile, RecognitionServer& server, QVString language)
    : mPile(pile), mServer(server), mLanguage(std::move(language)), mThread([this] { work(); }) {
}

PileReader::~PileReader() {
    mThread.join();
}

bool PileReader::hasEnded(std::chrono::milliseconds within) {
    std::unique_lock lock(mMutex);
    return mChanged.wait_for(lock, within, [this] { return mHasEnded; });
}

void PileReader::work() {
    while (const CardPile::Card card = mPile.takeWaiting()) {
        try {
            read(*card);
        } catch (const std::exception& exception) {
            fail(*card, std::string("Reading the card failed: ") + exception.what() + ". Try it again.");
        }
    }
    const std::lock_guard lock(mMutex);
    mHasEnded = true;
    mChanged.notify_all();
}

void PileReader::read(const PileCard& card) {
    // Asked for first, so that the page can say what is waited for, and why it came to nothing.
    if (const Result<ServerAccess> access = mServer.access(); !access) return fail(card, access.failure().message);
    report(card, [](PileCard& changed) {
        changed.state = PileCard::State::Reading;
        return true;
    });
    ScanRequest request{{}, mLanguage, /*skipNote=*/true};
    for (const ShelvedPicture& picture : card.pictures) {
        Result<CardPicture> opened = mPile.shelf().picture(picture);
        if (!opened) return fail(card, opened.failure().message);
        request.pictures.push_back(std::move(*opened));
    }
    const Result<ScanOutcome> outcome = CardScan(mServer).run(request);
    if (!outcome) return fail(card, outcome.failure().message);
    finish(card, *outcome);
}

void PileReader::finish(const PileCard& card, const ScanOutcome& outcome) {
    std::vector<std::string> remarks;
    for (const qv::Error& error : outcome.errors())
        remarks.push_back(ErrorText::message(error, mServer.name()));
    if (!remarks.empty() && !outcome.hasFields()) return fail(card, remarks.front());
    for (std::string& remark : scanRemarks(outcome, mLanguage, mServer.name()))
        remarks.push_back(std::move(remark));
    report(card, [&](PileCard& changed) {
        changed.state = PileCard::State::Done;
        changed.remarks = std::move(remarks);
        takeReadFields(changed, outcome.response->rawResultForFirstCard(), outcome.response->rawResultForSecondCard());
        return true;
    });
}

void PileReader::fail(const PileCard& card, const std::string& problem) {
    report(card, [&](PileCard& changed) {
        changed.state = PileCard::State::Failed;
        changed.problem = problem;
        return true;
    });
}

void PileReader::report(const PileCard& card, const CardPile::Change& how) {
    mPile.change(card.identifier, [&](PileCard& changed) { return changed.attempt == card.attempt && how(changed); });
}

}  // namespace qvhost
