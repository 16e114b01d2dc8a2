#include "Page/PileJSON.h"

#include "Page/CardNote.h"
#include "Page/FieldKind.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <initializer_list>

namespace qvhost::PileJSON {
namespace {

const char* word(PileCard::State state) {
    constexpr const char* kWords[] = {"waiting", "starting", "reading", "done", "failed"};
    return kWords[static_cast<int>(state)];
}

const char* word(PileCard::Saving saving) {
    constexpr const char* kWords[] = {"not", "underway", "done", "failed"};
    return kWords[static_cast<int>(saving)];
}

/// The text of the first field of that type that has one, the highest weight first.
std::string textOf(const PileCard& card, std::int32_t type) {
    const QVBusinessCardField* best = nullptr;
    for (const PileField& entry : card.fields) {
        const QVBusinessCardField& field = *entry.field;
        if (field.type() != type || field.text().value_or("").empty()) continue;
        if (best == nullptr || field.weight() > best->weight()) best = &field;
    }
    return best != nullptr ? *best->text() : std::string();
}

std::string firstOf(std::initializer_list<std::string> texts) {
    const auto* found = std::find_if(texts.begin(), texts.end(), [](const std::string& text) { return !text.empty(); });
    return found != texts.end() ? *found : std::string();
}

JSON::Value picturesJSON(const PileCard& card) {
    JSON::Value list = JSON::Value::array();
    for (std::size_t side = 0; side < card.pictures.size(); ++side) {
        const ShelvedPicture& picture = card.pictures[side];
        const PileSide& read = card.sides[side];
        const bool isMeasured = read.width > 0 && read.height > 0;
        list.push_back({
            {"id", picture.identifier},
            {"name", picture.name},
            {"width", picture.size.width},
            {"height", picture.size.height},
            {"unitsWide", isMeasured ? static_cast<double>(read.width) : picture.size.width},
            {"unitsHigh", isMeasured ? static_cast<double>(read.height) : picture.size.height},
            {"turn", read.orientation},
            {"isRead", read.isRead},
        });
    }
    return list;
}

/// Of several that a contact has once, one is in the note; of some kinds, none.
bool isInNote(const QVBusinessCardField& field, const QVVeltoContact& contact) {
    if (field.text().value_or("").empty()) return false;
    switch (field.type()) {
        case QVBusinessCardFieldTypeName:
            return field.text() == contact.fullName();
        case QVBusinessCardFieldTypeTitle:
            return field.text() == contact.jobTitle();
        case QVBusinessCardFieldTypeCompany:
            return field.text() == contact.company();
        case QVBusinessCardFieldTypeAddress:
            return field.text() == contact.address();
        case QVBusinessCardFieldTypeEmail:
        case QVBusinessCardFieldTypePhone:
        case QVBusinessCardFieldTypeMobile:
        case QVBusinessCardFieldTypeFax:
            return true;
        default:
            return false;
    }
}

JSON::Value fieldJSON(const PileField& entry, const QVVeltoContact& contact) {
    const QVBusinessCardField& field = *entry.field;
    const qv::Rect& frame = field.frame();
    return {
        {"id", entry.identifier},
        {"kind", FieldKind::word(field.type())},
        {"text", field.text().value_or("")},
        {"weight", entry.isCorrected ? JSON::Value(nullptr) : JSON::Value(field.weight())},
        {"side", entry.side ? JSON::Value(*entry.side) : JSON::Value(nullptr)},
        {"frame", JSON::Value::array({frame.origin.x, frame.origin.y, frame.size.width, frame.size.height})},
        {"isCorrected", entry.isCorrected},
        {"isInNote", isInNote(field, contact)},
    };
}

JSON::Value savedJSON(const PileCard& card) {
    const SaveOutcome& saved = card.saved;
    return {
        {"isNew", saved.outcome == QVAddressBookSaveOutcome::Created},
        {"where", saved.where},
        {"updated", saved.updated},
        {"byName", saved.byName},
        {"failure", JSON::from(saved.failure)},
        {"remarks", saved.remarks},
    };
}

}  // namespace

JSON::Value summary(const PileCard& card) {
    const std::string name = textOf(card, QVBusinessCardFieldTypeName);
    const std::string company = textOf(card, QVBusinessCardFieldTypeCompany);
    const std::string title = firstOf({name, company, textOf(card, QVBusinessCardFieldTypeEmail)});
    return {
        {"id", card.identifier},
        {"revision", card.revision},
        {"state", word(card.state)},
        {"title", title},
        {"subtitle", name.empty() ? "" : company},
        {"problem", card.problem},
        {"pictures", picturesJSON(card)},
        {"saving", word(card.saving)},
        {"isChangedSinceSaving", card.isChangedSinceSaving},
    };
}

JSON::Value whole(const PileCard& card) {
    JSON::Value value = summary(card);
    JSON::Value fields = JSON::Value::array();
    const auto contact = CardNote::contact(card);
    for (const PileField& field : card.fields)
        fields.push_back(fieldJSON(field, *contact));
    value["fields"] = std::move(fields);
    value["remarks"] = card.remarks;
    value["saved"] = savedJSON(card);
    return value;
}

}  // namespace qvhost::PileJSON
