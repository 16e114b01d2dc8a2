#include "Batch/BatchRun.h"

#include "Batch/CardFields.h"
#include "Batch/Interruption.h"
#include "Output/ErrorText.h"
#include "Output/PersonText.h"
#include "Output/ScanRemarks.h"
#include "QVCardScan/QVCardProcessingError.h"
#include "Support/HostLog.h"
#include "Support/StandardStreams.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace qvhost {
namespace {

/// The library reads three; the others are at hand when one is done.
constexpr std::size_t kMostInMemory = 5;
constexpr std::chrono::milliseconds kTurn{100};
constexpr int kMostStartsInVain = 5;
/// In a row. A server that nobody answers at is gone; one that refuses everything has another token.
constexpr int kMostUnreachable = 5;
constexpr int kMostUnreadable = 20;

bool isUnreadable(const ScanOutcome& outcome) {
    const auto errors = outcome.errors();
    return std::any_of(errors.begin(), errors.end(), [](const qv::Error& error) {
        return error.domain == kQVCardProcessingErrorDomain && error.code == QVCardProcessingErrorUnreadableResult;
    });
}

void append(std::vector<std::string>& texts, std::vector<std::string> more) {
    texts.insert(texts.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

/// What stands on the card belongs to the log, for those who asked for it: this line ends in mails and journals.
std::string inWords(const CardRecord& record) {
    if (!HostLog::isWanted()) return "read";
    const CardFields fields = CardFields::of(record);
    std::string words;
    for (const char* kind : {"Name", "Company", "Email"}) {
        const std::string text = fields.joined(kind, ", ");
        if (!text.empty()) words.append(words.empty() ? "" : ", ").append(text);
    }
    return words.empty() ? "no name, company or address" : words;
}

/// What stands behind a file's name need not begin with it.
std::string withoutName(const std::string& reason, const std::filesystem::path& file) {
    const std::string name = "\"" + file.string() + "\" ";
    return reason.starts_with(name) ? reason.substr(name.size()) : reason;
}

std::string joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts)
        all.append(all.empty() ? "" : " ").append(text);
    return all;
}

}  // namespace

BatchRun::BatchRun(const BatchFolder& folder, RecognitionServer& server, PersonSteps* steps, Settings settings,
                   std::vector<IndexPage::Failed> failed)
    : mFolder(folder), mServer(server), mSteps(steps), mSettings(std::move(settings)), mLists(folder) {
    mOutcome.failed = std::move(failed);
    if (!mOutcome.failed.empty()) worsen(ExitStatus::Incomplete);
}

BatchOutcome BatchRun::run(std::vector<PlannedCard> cards) {
    mWaiting.assign(std::make_move_iterator(cards.begin()), std::make_move_iterator(cards.end()));
    mProgress.emplace(mWaiting.size() + mSettings.finished, mSettings.finished);
    while (goesOn() && (!mWaiting.empty() || !mSuspects.empty() || mQueue.size() > 0)) {
        fill();
        if (auto landing = mQueue.take(kTurn)) land(*std::move(landing));
        mProgress->show();
        if (!goesOn()) break;
        if (auto failure = mLists.writeSometimes(mOutcome.failed)) stop(*std::move(failure));
    }
    // What has been read is not thrown away.
    while (!mOutcome.stopped) {
        auto landing = mQueue.take(std::chrono::milliseconds(0));
        if (!landing) break;
        if (CardScan::connectionFailed(landing->outcome)) {
            mWaiting.push_front(landing->flight.planned);
        } else {
            keep(*std::move(landing));
        }
    }
    mProgress.reset();
    mOutcome.left = mWaiting.size() + mSuspects.size() + mQueue.size();
    if (auto failure = mLists.write(mOutcome.failed)) stop(*std::move(failure));
    if (Interruption::signal() != 0) worsen(static_cast<ExitStatus>(128 + Interruption::signal()));
    return std::move(mOutcome);
}

bool BatchRun::goesOn() const {
    return !mOutcome.stopped && Interruption::signal() == 0;
}

void BatchRun::fill() {
    while (goesOn() && mSuspects.empty() && !mWaiting.empty() && mQueue.size() < kMostInMemory) {
        PlannedCard planned = std::move(mWaiting.front());
        mWaiting.pop_front();
        send(std::move(planned), /*isAlone=*/false);
    }
    if (!goesOn() || mSuspects.empty() || mQueue.size() > 0) return;
    PlannedCard planned = std::move(mSuspects.front());
    mSuspects.pop_front();
    send(std::move(planned), /*isAlone=*/true);
}

void BatchRun::send(PlannedCard planned, bool isAlone) {
    CardQueue::Flight flight;
    for (const std::string& file : planned.card.files()) {
        // Looked at before it is read: a picture that changes meanwhile is read again by the next batch.
        auto state = PictureState::of(file);
        auto picture = CardPicture::read(file);
        if (!picture || !state) {
            std::string why = !picture ? picture.failure().message : "\"" + file + "\" went away while it was read.";
            if (flight.pictures.empty()) return fail(planned, why);
            // Most of a card stands on its front. Without its back it counts as failed, and is read again.
            flight.problem = "Read without its back: " + std::move(why);
            break;
        }
        state->hash = picture->hash;
        flight.states.push_back(*std::move(state));
        flight.pictures.push_back(*std::move(picture));
    }
    const auto server = access();
    if (!server) return mWaiting.push_front(std::move(planned));
    flight.planned = std::move(planned);
    flight.known = mSteps != nullptr ? mSteps->nextCard() : nullptr;
    flight.server = *server;
    flight.isAlone = isAlone;
    const PlannedCard copy = flight.planned;
    if (!mQueue.add(std::move(flight), mSettings.language))
        fail(copy, "The library refused the card. Run again with --verbose to see why.");
}

std::optional<ServerAccess> BatchRun::access() {
    Result<ServerAccess> access = mServer.access();
    if (!access) {
        stop(access.failure());
        return std::nullopt;
    }
    if (access->token != mAccess.token && ++mStartsInVain > kMostStartsInVain) {
        stop({ExitStatus::Incomplete,
              "The recognition server ends again and again. Run the batch with --verbose to "
              "see why, or name another server with --server."});
        return std::nullopt;
    }
    mAccess = *access;
    return mAccess;
}

void BatchRun::land(CardQueue::Landing landing) {
    if (CardScan::connectionFailed(landing.outcome)) {
        const PlannedCard& planned = landing.flight.planned;
        if (!isLostWithServer(landing)) {
            countServerFailures(landing.outcome);
            return keep(std::move(landing));
        }
        if (landing.flight.isAlone) return fail(planned, "The recognition server ended while it read this card.");
        return mSuspects.push_back(planned);
    }
    countServerFailures(landing.outcome);
    keep(std::move(landing));
}

bool BatchRun::isLostWithServer(const CardQueue::Landing& landing) {
    return landing.flight.server.token != mAccess.token || mServer.hasEnded();
}

void BatchRun::countServerFailures(const ScanOutcome& outcome) {
    const bool isUnreachable = CardScan::connectionFailed(outcome);
    mUnreachable = isUnreachable ? mUnreachable + 1 : 0;
    mUnreadable = isUnreadable(outcome) ? mUnreadable + 1 : 0;
    if (!isUnreachable) mStartsInVain = 0;
    if (mUnreachable >= kMostUnreachable) {
        stop(
            {ExitStatus::Incomplete, "Nobody answers any more: the exchange with " + mServer.name() +
                                         " failed several times in a row. Check its address, and that it is running."});
    } else if (mUnreadable >= kMostUnreadable) {
        stop({ExitStatus::Incomplete,
              "None of the last answers of " + mServer.name() + " could be read. Check its address and the token."});
    }
}

void BatchRun::keep(CardQueue::Landing landing) {
    const PlannedCard planned = landing.flight.planned;
    ReadCard card{planned.name,
                  std::move(landing.flight.states),
                  std::move(landing.flight.pictures),
                  mSettings.language,
                  std::move(landing.outcome),
                  {},
                  {},
                  {},
                  "",
                  ""};
    if (!landing.flight.problem.empty()) card.problems.push_back(std::move(landing.flight.problem));
    for (const qv::Error& error : card.outcome.errors())
        card.problems.push_back(ErrorText::message(error, mServer.name()));
    std::vector<std::string> remarks = scanRemarks(card.outcome, mSettings.language, mServer.name());
    if (!card.outcome.hasFields()) {
        append(card.problems, std::move(remarks));
        return fail(planned, joined(card.problems));
    }
    card.remarks = std::move(remarks);
    card.UID = contactUID(card.states);
    if (mSteps != nullptr) card.person = mSteps->run(card.outcome, landing.flight.known, card.UID);
    finish(std::move(card), planned.card);
}

void BatchRun::finish(ReadCard card, const BatchCard& pictures) {
    const PersonOutcome& person = card.person;
    append(card.remarks, person.remarks);
    if (!pictures.remark.empty()) card.remarks.push_back("As to the pictures, " + pictures.remark + ".");
    if (person.save && !person.save->failure) card.savedIn = mSteps->savesIn()->name;
    if (person.merged && person.merged->UID) card.UID = *person.merged->UID;
    if (person.save && person.save->UID) card.UID = *person.save->UID;
    if (auto failure = saveFailureText(person); !failure.empty()) card.problems.push_back(std::move(failure));
    if (person.search && person.search->kind == SearchOutcome::Kind::TimedOut)
        card.problems.emplace_back("There was no answer to the search in time.");
    CardRecord record;
    if (auto failure = writeCard(mFolder, card, record)) {
        mWaiting.push_front({card.name, pictures});
        return stop(*std::move(failure));
    }
    for (const std::string& remark : card.remarks)
        ++mOutcome.remarks[remark];
    if (card.problems.empty()) {
        ++mOutcome.read;
    } else {
        mOutcome.failed.push_back({pictures.front.string(), joined(card.problems)});
        worsen(person.status() == ExitStatus::Done ? ExitStatus::Incomplete : person.status());
    }
    mProgress->add(card.name + ": " + inWords(record) + (card.problems.empty() ? "" : "; " + joined(card.problems)),
                   !card.problems.empty());
    print(record.object);
}

void BatchRun::fail(const PlannedCard& planned, const std::string& reason) {
    const std::string why = withoutName(reason, planned.card.front);
    mOutcome.failed.push_back({planned.card.front.string(), why});
    worsen(ExitStatus::Incomplete);
    mProgress->add(planned.name + ": failed: " + why, /*failed=*/true);
    print({{"name", planned.name}, {"files", planned.card.files()}, {"complete", false}, {"problems", {why}}});
}

void BatchRun::print(const JSON::Value& object) {
    if (!mSettings.printsJSON) return;
    const ExitStatus status = StandardStreams::writeResult(JSON::line(object));
    // It has been said, or nobody listens any more.
    if (status != ExitStatus::Done) stop({status, ""});
}

void BatchRun::stop(Failure failure) {
    worsen(failure.status);
    if (!mOutcome.stopped) mOutcome.stopped = std::move(failure);
}

void BatchRun::worsen(ExitStatus status) {
    mOutcome.status = std::max(mOutcome.status, status);
}

}  // namespace qvhost
