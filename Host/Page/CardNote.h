#pragma once

#include "Page/PictureShelf.h"
#include "Page/PileCard.h"
#include "QVCardScan/QVBusinessCard.h"
#include "QVCardScan/QVVeltoContact.h"
#include "Scan/CardScan.h"

#include <memory>
#include <string>

/// What the library makes of a card with its corrections. Any thread may call.
namespace qvhost::CardNote {

/// The card with the fields as they are now; fields without a text are left out.
std::shared_ptr<QVBusinessCard> card(const PileCard& from);

/// The person of the card, with its photographs.
std::shared_ptr<QVVeltoContact> contact(const PileCard& from);

/// The contact as a vCard.
std::string vCard(const PileCard& from);

/// The note as a page for a browser, with the pictures in a size for looking at. Absent when the library makes none.
QVString page(const PileCard& from, const PictureShelf& shelf);

/// The note in the host's markup.
QVString markup(const PileCard& from);

/// Everything about the card, as reading it anew would give.
ScanOutcome outcome(const PileCard& from);

}  // namespace qvhost::CardNote
