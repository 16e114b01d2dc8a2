#pragma once

#include "QVCardScan/QVBusinessCard.h"
#include "QVCardScan/QVCardScanTypes.h"

#include <memory>

/// The card behind raw recognition results. A response that carries a note carries no card; whoever wants to show the
/// fields parses the raw results again and puts them together as the framework did.
namespace qvhost::RecognisedCard {

/// What the parser makes of one answer; null when it makes no card of it, or there is no answer.
std::shared_ptr<QVBusinessCard> fromResult(const QVString& result);

/// The cards of front and back merged into one: the lower score goes into the higher, a tie stays with the front.
/// A front without a card is an empty card when the back has one. Null when neither has one. The fields are those of
/// the two cards; the one that wins changes.
std::shared_ptr<QVBusinessCard> merged(std::shared_ptr<QVBusinessCard> front,
                                       const std::shared_ptr<QVBusinessCard>& back);

/// The same from the two answers.
std::shared_ptr<QVBusinessCard> fromResults(const QVString& front, const QVString& back);

}  // namespace qvhost::RecognisedCard
