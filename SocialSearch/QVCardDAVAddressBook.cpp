#include "QVSocialSearch/QVCardDAVAddressBook.h"

#include "AddressBook/AddressBookProblems.h"
#include "CardDAV/DAVAddress.h"
#include "CardDAV/DAVAuthorization.h"
#include "CardDAV/DAVCardSaver.h"
#include "CardDAV/DAVCollection.h"
#include "CardDAV/DAVDiscovery.h"
#include "CardDAV/DAVLookUp.h"
#include "Merging/EntryMeaning.h"
#include "QVPlatform/Atomic.h"
#include "QVSocialSearch/QVVCardProfile.h"

#include <functional>
#include <utility>

struct QVCardDAVAddressBook::State {
    const std::string address;
    const bool hasSoundUser;
    DAVAuthorization authorization;
    bool allowsClearText = false;
    long totalSeconds = 120;
    DAVTrust trust;
    /// The collection once it is found.
    qv::Atomic<std::optional<qv::URL>> collection;

    State(std::string address_, QVCardDAVCredentials credentials)
        : address(std::move(address_)),
          hasSoundUser(credentials.user.value_or("").find(':') == std::string::npos),
          authorization(std::move(credentials)) {}

    std::optional<qv::URL> server(Problems& problems) const;
    std::optional<qv::URL> findCollection(DAVClient& client, Problems& problems);
    /// Does some work on the cards, if they can be found.
    void work(Problems& problems, const std::function<void(DAVCollection& cards)>& work);
};

std::optional<qv::URL> QVCardDAVAddressBook::State::server(Problems& problems) const {
    std::string problem;
    auto url = serverAddress(address, allowsClearText, problem);
    if (!url) problems.fail(addressBookError(QVAddressBookErrorUnreadable, problem));
    if (url && hasSoundUser) return url;
    problems.fail(addressBookError(QVAddressBookErrorNotAllowed, "A user name for HTTP has no colon in it"));
    return std::nullopt;
}

std::optional<qv::URL> QVCardDAVAddressBook::State::findCollection(DAVClient& client, Problems& problems) {
    if (auto known = collection.load()) return known;
    DAVDiscovery discovery(client);
    auto found = discovery.collection();
    if (found) {
        collection.store(found);
    } else if (discovery.error()) {
        problems.fail(*discovery.error());
    }
    return found;
}

void QVCardDAVAddressBook::State::work(Problems& problems, const std::function<void(DAVCollection& cards)>& work) {
    const std::optional<qv::URL> address_ = server(problems);
    if (!address_) return;
    DAVClient client(*address_, authorization, totalSeconds);
    const std::optional<qv::URL> url = findCollection(client, problems);
    if (!url) return;
    DAVCollection cards(client, *url);
    work(cards);
    // It may have moved.
    if (problems.hasFailed()) collection.store(std::nullopt);
}

QVCardDAVAddressBook::QVCardDAVAddressBook(std::string address, QVCardDAVCredentials credentials)
    : mState(std::make_unique<State>(std::move(address), std::move(credentials))) {
}

QVCardDAVAddressBook::~QVCardDAVAddressBook() = default;

void QVCardDAVAddressBook::setAllowsClearText(bool allowsClearText) {
    mState->allowsClearText = allowsClearText;
}

void QVCardDAVAddressBook::setTotalSeconds(long totalSeconds) {
    mState->totalSeconds = totalSeconds;
}

QVString QVCardDAVAddressBook::collectionAddress(std::optional<qv::Error>* error) {
    QVString address;
    Problems problems;
    mState->work(problems, [&](DAVCollection& cards) { address = cards.url().absoluteString(); });
    problems.report(error);
    return address;
}

QVAddressBookSaveResult QVCardDAVAddressBook::saveProfile(const QVSocialProfile& profile) {
    QVAddressBookSaveResult result;
    Problems problems;
    mState->work(problems, [&](DAVCollection& cards) {
        result = DAVCardSaver(cards, mState->trust, profile).save();
        if (result.error) problems.fail(*result.error);
    });
    if (!result.error) result.error = problems.error();
    return result;
}

QVAddressBook::Profiles QVCardDAVAddressBook::profiles(std::optional<qv::Error>* error) {
    Profiles found;
    Problems problems;
    const auto keep = [&](const DAVCard& card) {
        found.push_back(qv::profileOfCard(card.card, card.UID()));
        return true;
    };
    mState->work(problems, [&](DAVCollection& cards) {
        DAVLookUp(cards, mState->trust).visitByReading([](const DAVCard&) { return true; }, problems, keep);
    });
    problems.report(error);
    return found;
}

QVAddressBook::Profiles QVCardDAVAddressBook::profilesWithEmailAddress(const std::string& address,
                                                                       std::optional<qv::Error>* error) {
    Profiles found;
    Problems problems;
    const std::string text = trimmed(address);
    const auto isMeant = [&](const DAVCard& card) { return qv::cardHasEmailAddress(card.card, text); };
    const auto keep = [&](const DAVCard& card) {
        found.push_back(qv::profileOfCard(card.card, card.UID()));
        return true;
    };
    if (!text.empty()) {
        mState->work(problems, [&](DAVCollection& cards) {
            DAVLookUp(cards, mState->trust).visit("EMAIL", text, isMeant, problems, keep);
        });
    }
    problems.report(error);
    return found;
}

std::shared_ptr<QVSocialProfile> QVCardDAVAddressBook::profileWithUID(const std::string& UID,
                                                                      std::optional<qv::Error>* error) {
    std::shared_ptr<QVSocialProfile> found;
    Problems problems;
    const auto isMeant = [&](const DAVCard& card) { return card.UID() == UID; };
    const auto keep = [&](const DAVCard& card) {
        found = qv::profileOfCard(card.card, UID);
        return false;
    };
    mState->work(problems, [&](DAVCollection& cards) {
        const DAVReading guess = cards.read(addressOfNewCard(cards.url(), UID));
        if (guess.card && isMeant(*guess.card)) {
            keep(*guess.card);
        } else {
            DAVLookUp(cards, mState->trust).visit("UID", UID, isMeant, problems, keep);
        }
    });
    problems.report(error);
    return found;
}
