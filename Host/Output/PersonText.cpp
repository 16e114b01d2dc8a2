#include "Output/PersonText.h"

#include "Output/ContactTable.h"
#include "People/RecordProfile.h"
#include "Support/TerminalText.h"

#include <string_view>

namespace qvhost {
namespace {

const std::string kHeading = "The contact, with what is known of the person:\n";

std::string line(std::string_view label, const std::string& text) {
    return std::string(label) + ": " + TerminalText::printable(text) + "\n";
}

/// Said where a contact is called otherwise than the card, because it may be somebody else.
std::string otherNameOnCard(const PersonOutcome& person, const std::string& name) {
    const std::string onCard = nameInWords({person.nameOnCard, std::nullopt, {}});
    return !person.nameOnCard || onCard == name ? "" : "; on the card: " + onCard;
}

std::string because(bool byEmail) {
    return byEmail ? "the same e-mail address" : "the same name and company";
}

std::string pages(const std::optional<QVSocialSearchResultType>& type) {
    switch (type.value_or(QVSocialSearchResultNotFound)) {
        case QVSocialSearchResultLinkedIn:
            return ", with a LinkedIn page";
        case QVSocialSearchResultFacebook:
            return ", with a Facebook page";
        case QVSocialSearchResultLinkedInAndFacebook:
            return ", with pages on LinkedIn and Facebook";
        default:
            return "";
    }
}

std::string searchText(const PersonOutcome& person) {
    const SearchOutcome& search = *person.search;
    switch (search.kind) {
        case SearchOutcome::Kind::NoAddress:
            return "skipped, because the card has no e-mail address to search by";
        case SearchOutcome::Kind::NotFound:
            return "nobody was found";
        case SearchOutcome::Kind::TimedOut:
            return "there was no answer in time";
        case SearchOutcome::Kind::Found:
            break;
    }
    const std::string name = nameInWords(Person::of(*search.profile));
    return "found " + name + (isRecord(search.profile) ? " in the address book" : "") + pages(search.resultType) +
           otherNameOnCard(person, name);
}

std::string mergedText(const PersonOutcome& person) {
    if (!person.merged) return "with none of the contacts";
    const std::string name = nameInWords(person.merged->person);
    return "with " + name + " (" + because(person.merged->byEmail) + otherNameOnCard(person, name) + "), " +
           person.merged->where;
}

std::string savedText(const PersonOutcome& person) {
    const SaveOutcome& save = *person.save;
    if (save.failure) return "not saved";
    if (save.outcome == QVAddressBookSaveOutcome::Created) return "created in " + save.where;
    return "updated " + save.updated + " (" + because(!save.byName) + otherNameOnCard(person, save.updated) + ") in " +
           save.where;
}

}  // namespace

std::string personText(const PersonOutcome& person, const std::shared_ptr<QVVeltoContact>& contact) {
    std::string text;
    if (person.isEnriched() && contact) text += kHeading + contactTable(*contact) + "\n";
    if (person.comparesContacts) text += line("Merged", mergedText(person));
    if (person.search) text += line("Search", searchText(person));
    if (person.save) text += line("Contact", savedText(person));
    return text;
}

std::string saveFailureText(const PersonOutcome& person) {
    if (!person.save || !person.save->failure) return "";
    return "The contact was not saved: " + *person.save->failure + ". Mend that and scan again.";
}

}  // namespace qvhost
