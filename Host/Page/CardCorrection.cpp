#include "Page/CardCorrection.h"

#include "Page/FieldKind.h"

#include <algorithm>

namespace qvhost::CardCorrection {
namespace {

/// Above every recognised one of its kind: what a person says counts.
constexpr std::int64_t kCertain = 101;

/// Without the control characters, which no markup and no vCard can hold; lines stay.
std::string cleaned(const std::string& text) {
    std::string clean;
    for (const char c : text) {
        if (static_cast<unsigned char>(c) >= 0x20 ? c != 0x7F : c == '\n') clean += c;
    }
    return clean;
}

std::shared_ptr<const QVBusinessCardField> fieldWith(const QVBusinessCardField& base, std::int32_t type,
                                                     const QVString& text) {
    return QVBusinessCardField::initWithType(type, 0, FieldKind::word(type), text, base.frame(), kCertain,
                                             base.orient());
}

void markChanged(PileCard& card) {
    card.isChangedSinceSaving = true;
}

auto position(PileCard& card, std::uint64_t identifier) {
    return std::find_if(card.fields.begin(), card.fields.end(),
                        [&](const PileField& field) { return field.identifier == identifier; });
}

/// A card that failed may be typed in instead.
bool isOpenForCorrection(const PileCard& card) {
    return card.state == PileCard::State::Done || card.state == PileCard::State::Failed;
}

std::uint64_t unusedIdentifier(const PileCard& card) {
    std::uint64_t last = card.lastField;
    for (const PileField& field : card.fields)
        last = std::max(last, field.identifier);
    return last + 1;
}

}  // namespace

bool change(PileCard& card, std::uint64_t field, const std::optional<std::int32_t>& type,
            const std::optional<std::string>& text) {
    const auto found = position(card, field);
    if (!isOpenForCorrection(card) || found == card.fields.end()) return false;
    if (text && text->size() > kMaximumText) return false;
    const QVBusinessCardField& old = *found->field;
    found->field = fieldWith(old, type.value_or(old.type()), text ? QVString(cleaned(*text)) : old.text());
    found->isCorrected = true;
    markChanged(card);
    return true;
}

bool add(PileCard& card, std::int32_t type, const std::string& text) {
    if (!isOpenForCorrection(card) || card.fields.size() >= kMaximumFields || text.size() > kMaximumText) return false;
    QVBusinessCardField nowhere;
    nowhere.setOrient(card.sides[card.winner].orientation);
    card.lastField = unusedIdentifier(card);
    card.fields.push_back(
        {card.lastField, fieldWith(nowhere, type, cleaned(text)), std::nullopt, /*isCorrected=*/true});
    markChanged(card);
    return true;
}

bool remove(PileCard& card, std::uint64_t field) {
    const auto found = position(card, field);
    if (!isOpenForCorrection(card) || found == card.fields.end()) return false;
    card.lastField = unusedIdentifier(card) - 1;
    card.fields.erase(found);
    markChanged(card);
    return true;
}

}  // namespace qvhost::CardCorrection
