// From a recognition server's answer to the note: whatever the server sends, the note holds together.

#include "QVCardScan/QVBizCardParser.h"
#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "Support/Input.h"
#include "Support/Outline.h"
#include "Support/Require.h"

using fuzzing::require;

namespace {

bool hasHarmlessLabels(const QVVeltoContact& contact) {
    for (const auto& fields : {contact.emailFields(), contact.phoneFields()}) {
        for (const auto& field : *fields) {
            if (!fuzzing::isHarmlessLabel(field->label().value_or(""))) return false;
        }
    }
    return true;
}

/// The same contact with "x" for every text.
std::shared_ptr<QVVeltoContact> withoutTexts(const QVVeltoContact& contact) {
    auto plain = std::make_shared<QVVeltoContact>();
    const auto stand = [](const QVString& text) { return text ? QVString(text->empty() ? "" : "x") : QVString(); };
    const auto standAll = [](const QVContactFieldSet& fields) {
        return std::make_shared<std::vector<std::shared_ptr<QVVeltoContactField>>>(
            fields->size(), QVVeltoContactField::initWithLabel("x", "x"));
    };
    plain->setFullName(stand(contact.fullName()));
    plain->setJobTitle(stand(contact.jobTitle()));
    plain->setCompany(stand(contact.company()));
    plain->setAddress(stand(contact.address()));
    plain->setOrderedEmailFields(standAll(contact.emailFields()));
    plain->setOrderedPhoneFields(standAll(contact.phoneFields()));
    return plain;
}

void checkNote(const std::shared_ptr<QVVeltoContact>& contact, bool full) {
    const QVString note = QVVeltoNoteGenerator().noteFromContactInfo(contact, full);
    require(note.has_value(), "a contact has a note");
    if (!hasHarmlessLabels(*contact)) return;
    const auto outline = fuzzing::outlineOfNote(*note);
    require(outline.has_value(), "the note is well-formed");
    const QVString plain = QVVeltoNoteGenerator().noteFromContactInfo(withoutTexts(*contact), full);
    require(outline == fuzzing::outlineOfNote(*plain), "texts leave the note's elements alone");
}

void checkCard(QVBusinessCard& card) {
    (void)card.description();
    (void)card.fullName();
    (void)card.rotationByDegrees();
    const std::int64_t score = card.score();
    require(score >= 0 && score <= 2, "a score is 0, 1 or 2");
    if (const auto emails = card.emails()) require(!emails->empty(), "no e-mails are absent, not empty");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    std::optional<qv::Error> error;
    const auto card = QVBizCardParser().parse(fuzzing::textOf(bytes, count), &error);
    require(!error, "an empty slot stays empty");
    if (!card) return 0;
    checkCard(*card);
    const auto contact = QVVeltoContact::initWithCard(card);
    (void)contact->description();
    checkNote(contact, /*full=*/true);
    checkNote(contact, /*full=*/false);
    const std::size_t before = card->fields() ? card->fields()->size() : 0;
    card->mergeWithCard(card);
    require((card->fields() ? card->fields()->size() : 0) >= before, "a merge takes nothing away");
    return 0;
}
