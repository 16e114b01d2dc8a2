#include "CardDAV/DAVCardSaver.h"

#include "AddressBook/RecordName.h"
#include "CardDAV/DAVAddress.h"
#include "QVSocialSearch/QVVCardProfile.h"

#include <any>
#include <utility>

namespace {

constexpr int kAttempts = 12;
constexpr int kMostLost = 3;
constexpr int kMostAccepted = 3;
constexpr std::size_t kLargestAnswer = std::size_t{1} << 20;

QVAddressBookSaveResult failed(qv::Error error) {
    return {.error = std::move(error), .UID = std::nullopt};
}

QVAddressBookSaveResult failed(QVAddressBookErrorCode code, std::string description) {
    return failed(addressBookError(code, std::move(description)));
}

/// The error of a save that may have been done all the same.
QVAddressBookSaveResult unknown(const qv::Error& error) {
    const auto text = std::any_cast<std::string>(error.userInfo.at(std::string(qv::kErrorDescriptionKey)));
    return failed(QVAddressBookErrorUnwritable, text + "; it is not known whether the card was saved");
}

bool isGone(long status) {
    return status == 404 || status == 410;
}

/// The one in front of the server does not know what became of the request.
bool isGatewayFailure(long status) {
    return status == 502 || status == 504;
}

}  // namespace

DAVCardSaver::DAVCardSaver(DAVCollection& collection, DAVTrust& trust, const QVSocialProfile& profile)
    : mCollection(collection), mLookUp(collection, trust), mProfile(profile), mURL(collection.url()) {
    const bool isRecord = (profile.profileType() & QVSocialProfileSourceAddressBook) != 0;
    mHasRecord = isRecord && !profile.addressBookUID().value_or("").empty();
    mMustLook = mHasRecord;
    mUID = mHasRecord ? *profile.addressBookUID() : newUUID();
    mURL = addressOfNewCard(collection.url(), mUID);
}

QVAddressBookSaveResult DAVCardSaver::save() {
    for (int i = 0; i < kAttempts; ++i) {
        if (const Attempt result = attempt()) return *result;
        mMustLook = true;
    }
    return failed(QVAddressBookErrorConflict,
                  mCollection.url().absoluteString() + ": others kept changing the record " + mUID);
}

DAVCardSaver::Attempt DAVCardSaver::attempt() {
    if (!mMustLook) return create();
    DAVReading record = find();
    switch (record.state) {
        case DAVReading::State::Read:
            return update(record);
        case DAVReading::State::Missing:
            // What the server took and hides under another name is not written twice.
            return mAccepted > 0 ? Attempt(finish()) : create();
        case DAVReading::State::Broken:
            return failed(QVAddressBookErrorBrokenRecord,
                          mURL.absoluteString() + ": " + record.problem + "; it was left as it is");
        case DAVReading::State::Failed:
            break;
    }
    return mLost > 0 ? unknown(record.error) : failed(record.error);
}

DAVReading DAVCardSaver::find() {
    DAVReading reading = mCollection.read(mURL);
    if (reading.state == DAVReading::State::Failed) return reading;
    if (reading.state == DAVReading::State::Read && reading.card->UID() == mUID) return reading;
    if (reading.state == DAVReading::State::Broken && mHasRecord) return reading;
    // Somebody else's card has the name.
    const bool isTaken = reading.state != DAVReading::State::Missing;
    std::optional<qv::Error> failure;
    const std::optional<qv::URL> url = addressByUID(failure);
    if (url) return mCollection.read(*url);
    if (isTaken) mURL = addressOfNewCard(mCollection.url(), newUUID());
    if (failure) return {.error = *failure};
    return {.state = DAVReading::State::Missing};
}

std::optional<qv::URL> DAVCardSaver::addressByUID(std::optional<qv::Error>& failure) {
    std::optional<qv::URL> url;
    Problems problems;
    const auto isMeant = [&](const DAVCard& card) { return card.UID() == mUID; };
    const auto keep = [&](const DAVCard& card) {
        url = card.url;
        return false;
    };
    mLookUp.visit("UID", mUID, isMeant, problems, keep);
    // A record is made anew only when no card has its UID, whatever the server's search may say.
    if (!url && mHasRecord && !problems.hasFailed()) mLookUp.visitByReading(isMeant, problems, keep);
    if (!url && problems.hasFailed()) failure = problems.error();
    return url;
}

DAVCardSaver::Attempt DAVCardSaver::update(DAVReading& record) {
    QVVCard& card = record.card->card;
    const qv::URL url = record.card->url;
    qv::updateCard(card, mProfile, mUID);
    std::string bytes = card.bytes();
    if (bytes == record.bytes) return finish();
    // The condition below is the server's to keep; one that loses it on the way is caught here as a rule.
    if (!mCollection.isUnchanged(record)) return std::nullopt;
    return put(url, std::move(bytes), /*isNew=*/false, record.ETag);
}

DAVCardSaver::Attempt DAVCardSaver::create() {
    if (!qv::profileHasContents(mProfile)) return failed(QVAddressBookErrorNoProfile, "There is nothing to save");
    QVVCard card = QVVCard::emptyCard();
    qv::updateCard(card, mProfile, mUID);
    return put(mURL, card.bytes(), /*isNew=*/true, "");
}

DAVCardSaver::Attempt DAVCardSaver::put(const qv::URL& url, std::string bytes, bool isNew, const std::string& ETag) {
    if (bytes.size() > QVVCard::kMaximumSize)
        return failed(QVAddressBookErrorUnwritable, url.absoluteString() + ": the card is too large");
    DAVRequest request{.method = "PUT", .url = url, .headers = {{"Content-Type", "text/vcard; charset=utf-8"}}};
    if (isNew) request.headers.emplace_back("If-None-Match", "*");
    if (!isNew && !ETag.empty()) request.headers.emplace_back("If-Match", ETag);
    request.body = std::move(bytes);
    return afterPut(mCollection.client().send(std::move(request), kLargestAnswer), isNew);
}

DAVCardSaver::Attempt DAVCardSaver::afterPut(const DAVAnswer& answer, bool isNew) {
    mIsOurs = mIsOurs || (isNew && (answer.isSuccess() || answer.isLost || isGatewayFailure(answer.status)));
    if (answer.isSuccess()) return accept(answer);
    if (answer.isLost || isGatewayFailure(answer.status)) return lose(answer);
    constexpr long kConflict = 409;
    constexpr long kPreconditionFailed = 412;
    const bool isConflict = isNew && answer.status == kConflict && mRefused++ == 0;
    const bool isChanged = answer.status == kPreconditionFailed || (!isNew && isGone(answer.status));
    if (isConflict || isChanged) return std::nullopt;
    return failed(answer.error(/*isWriting=*/true));
}

DAVCardSaver::Attempt DAVCardSaver::accept(const DAVAnswer& answer) {
    // Without the mark the server may have written something else (RFC 6352, 6.3.2.3), so the next attempt looks. One
    // that never keeps all of it is believed in the end.
    if (++mAccepted >= kMostAccepted || !answer.ETag.empty()) return finish();
    return std::nullopt;
}

DAVCardSaver::Attempt DAVCardSaver::lose(const DAVAnswer& answer) {
    if (++mLost < kMostLost) return std::nullopt;
    return unknown(answer.error(/*isWriting=*/true));
}

QVAddressBookSaveResult DAVCardSaver::finish() const {
    const bool isCreated = !mHasRecord || mIsOurs;
    return {.error = std::nullopt,
            .UID = mUID,
            .outcome = isCreated ? QVAddressBookSaveOutcome::Created : QVAddressBookSaveOutcome::Updated};
}
