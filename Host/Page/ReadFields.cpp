#include "Page/ReadFields.h"

#include "Scan/RecognisedCard.h"

#include <algorithm>

namespace qvhost {
namespace {

using CardPointer = std::shared_ptr<QVBusinessCard>;

PileSide sideOf(const CardPointer& card, const QVString& result) {
    PileSide side;
    side.isRead = result.has_value();
    side.result = result;
    if (!card) return side;
    side.width = card->cardWidth();
    side.height = card->cardHeight();
    side.orientation = card->rotationByDegrees();
    return side;
}

bool has(const CardPointer& card, const std::shared_ptr<QVBusinessCardField>& field) {
    const QVFieldArray fields = card ? card->fields() : nullptr;
    return fields && std::find(fields->begin(), fields->end(), field) != fields->end();
}

}  // namespace

void takeReadFields(PileCard& card, const QVString& front, const QVString& back) {
    const CardPointer first = RecognisedCard::fromResult(front);
    const CardPointer second = RecognisedCard::fromResult(back);
    card.sides = {sideOf(first, front), sideOf(second, back)};
    // The one that wins takes the other's fields in, and has to be asked for its own before.
    const auto own = second && second->fields() ? std::make_shared<QVBusinessCard>(*second) : nullptr;
    const CardPointer whole = RecognisedCard::merged(first, second);
    card.winner = whole && whole == second ? 1 : 0;
    card.fields.clear();
    if (!whole) return;
    card.language = whole->language();
    std::uint64_t identifier = 0;
    for (const auto& field : whole->fields() ? *whole->fields() : std::vector<std::shared_ptr<QVBusinessCardField>>()) {
        if (field) card.fields.push_back({++identifier, field, has(own, field) ? 1U : 0U, /*isCorrected=*/false});
    }
}

}  // namespace qvhost
