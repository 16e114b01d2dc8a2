#include "Page/CardNote.h"

#include "Batch/ContactVCard.h"
#include "Output/NoteHTML.h"
#include "Output/Resources.h"
#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "QVPlatform/MD5.h"

#include <map>
#include <utility>

namespace qvhost::CardNote {
namespace {

using Hashes = std::vector<std::string>;

/// The winner's picture goes first in a note.
std::vector<std::size_t> sidesInOrder(const PileCard& card) {
    if (card.pictures.size() < 2) return {0};
    return {card.winner, 1 - card.winner};
}

std::shared_ptr<QVVeltoContact> contactWith(const PileCard& from, Hashes hashes) {
    auto contact = QVVeltoContact::initWithCard(card(from));
    contact->setResourceHashes(std::make_shared<Hashes>(std::move(hashes)));
    return contact;
}

/// Of several fields of a kind that a contact has once, the last one counts: what a person said has to be that one.
bool goesLast(const PileField& entry) {
    const std::int32_t type = entry.field->type();
    const bool isManifold = type == QVBusinessCardFieldTypeEmail || type == QVBusinessCardFieldTypePhone ||
                            type == QVBusinessCardFieldTypeMobile || type == QVBusinessCardFieldTypeFax;
    return entry.isCorrected && !isManifold;
}

std::shared_ptr<QVBusinessCardField> copyOf(const QVBusinessCardField& field) {
    return QVBusinessCardField::initWithType(field.type(), field.label(), field.name(), field.text(), field.frame(),
                                             field.weight(), field.orient());
}

QVString noteOf(const std::shared_ptr<QVVeltoContact>& contact) {
    return QVVeltoNoteGenerator().noteFromContactInfo(contact);
}

}  // namespace

std::shared_ptr<QVBusinessCard> card(const PileCard& from) {
    auto fields = std::make_shared<std::vector<std::shared_ptr<QVBusinessCardField>>>();
    for (const bool wanted : {false, true}) {
        for (const PileField& entry : from.fields) {
            if (goesLast(entry) == wanted && !entry.field->text().value_or("").empty())
                fields->push_back(copyOf(*entry.field));
        }
    }
    auto card = QVBusinessCard::initWithLanguage(from.language, std::move(fields), nullptr, nullptr);
    card->setCardWidth(from.sides[from.winner].width);
    card->setCardHeight(from.sides[from.winner].height);
    return card;
}

std::shared_ptr<QVVeltoContact> contact(const PileCard& from) {
    Hashes hashes;
    for (const std::size_t side : sidesInOrder(from))
        hashes.push_back(from.pictures[side].hash);
    return contactWith(from, std::move(hashes));
}

std::string vCard(const PileCard& from) {
    // The same card gives the same contact, however often it is handed to a program.
    return contactVCard(*contact(from), from.pictures.front().hash);
}

QVString page(const PileCard& from, const PictureShelf& shelf) {
    Resources resources;
    Hashes hashes;
    const auto rotation = std::make_shared<std::map<std::string, std::int64_t>>();
    for (const std::size_t side : sidesInOrder(from)) {
        qv::Data view = shelf.bytes(from.pictures[side].identifier, PictureShelf::Form::View);
        hashes.push_back(qv::lowerHexMD5(view));
        (*rotation)[hashes.back()] = from.sides[side].orientation;
        resources.add(std::move(view));
    }
    resources.add(QVVeltoNoteGenerator::dataForNSImage(QVVeltoNoteGenerator::placeholderAvatar(), "image/png"));
    const auto person = contactWith(from, std::move(hashes));
    const QVString note = noteOf(person);
    if (!note) return std::nullopt;
    return noteHTML(*note, person->fullName().value_or("Business card"), resources, rotation);
}

QVString markup(const PileCard& from) {
    return noteOf(contact(from));
}

ScanOutcome outcome(const PileCard& from) {
    ScanOutcome outcome;
    outcome.pictureCount = from.pictures.size();
    outcome.card = card(from);
    outcome.response = std::make_shared<QVCardProcessingResponse>();
    const auto person = contact(from);
    outcome.response->setContact(person);
    outcome.response->setQvmlContent(noteOf(person));
    outcome.response->setRawResultForFirstCard(from.sides[0].result);
    outcome.response->setRawResultForSecondCard(from.sides[1].result);
    const auto rotation = std::make_shared<std::map<std::string, std::int64_t>>();
    for (std::size_t side = 0; side < from.pictures.size(); ++side) {
        if (from.sides[side].orientation != 0) (*rotation)[from.pictures[side].hash] = from.sides[side].orientation;
    }
    outcome.response->setImageRotationMap(rotation);
    return outcome;
}

}  // namespace qvhost::CardNote
