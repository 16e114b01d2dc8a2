#pragma once

#include "QVPlatform/Export.h"
#include "QVSocialSearch/QVSocialProfile.h"
#include "QVSocialSearch/QVVCard.h"

#include <memory>
#include <string>

/// What a vCard and a social profile have in common. Wherever cards are kept, in files or on a server, these are the
/// rules.

namespace qv {

/// The UID on the card; absent when there is none.
QV_EXPORT QVString uidOfCard(const QVVCard& card);

/// Whether one of the card's e-mail addresses is that one, without regard to case.
QV_EXPORT bool cardHasEmailAddress(const QVVCard& card, const std::string& address);

/// What the card says of a person: name, title, company (the first part of ORG), e-mails, phones, addresses, pages,
/// handles and picture, as a profile from the address book. `UID` stands for a UID that the card lacks.
QV_EXPORT std::shared_ptr<QVSocialProfile> profileOfCard(const QVVCard& card, const std::string& UID);

/// Writes what the profile says into the card: name, title, company, pages and picture replace the card's, the entries
/// of the lists are added when the card has none of that meaning. What the profile was read with (`recordAsRead`)
/// replaces nothing: the card may say something newer. Nothing is ever taken away, and lines that say the same already
/// stay as they are. Afterwards the card has a UID (`UID` if it had none), FN and N.
QV_EXPORT void updateCard(QVVCard& card, const QVSocialProfile& profile, const std::string& UID);

/// Whether there is anything in the profile that a card would hold.
QV_EXPORT bool profileHasContents(const QVSocialProfile& profile);

}  // namespace qv
