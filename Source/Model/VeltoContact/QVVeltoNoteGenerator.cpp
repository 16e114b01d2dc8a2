#include "QVCardScan/QVVeltoNoteGenerator.h"

#include "NoteEncoding.h"
#include "NoteMedia.h"
#include "NoteRows.h"
#include "NoteTemplate.h"
#include "QVCardScan/QVCardScanDefines.h"
#include "QVPlatform/Format.h"

using namespace qvnote;

namespace {

void fillName(NoteTemplate& note, const QVVeltoContact& contact) {
    if (!contact.fullName()) return;
    note.fill(QVDisplayAsPlaceholder, qv::format(QVStyleDisplayAs, escapedMarkup(*contact.fullName())));
}

void fillLists(NoteTemplate& note, const QVVeltoContact& contact) {
    note.fill(QVEmailsPlaceholder, emailRows(chosenList(contact.orderedEmailFields(), contact.emailFields())));
    note.fill(QVPhonesPlaceholder, phoneRows(chosenList(contact.orderedPhoneFields(), contact.phoneFields())));
    note.fill(QVTwittersPlaceholder,
              twitterRows(chosenList(contact.orderedTwitterHandles(), contact.twitterHandles())));
    note.fill(QVWeibosPlaceholder, weiboRows(chosenList(contact.orderedWeiboHandles(), contact.weiboHandles())));
}

void fillLinks(NoteTemplate& note, const QVVeltoContact& contact) {
    if (contact.address()) note.fill(QVPlaceAddressPlaceholder, addressRow(*contact.address()));
    if (contact.linkedInProfileURL()) note.fill(QVLinkedInPlaceholder, linkedInRow(*contact.linkedInProfileURL()));
    if (contact.facebookProfileURL()) note.fill(QVFacebookPlaceholder, facebookRow(*contact.facebookProfileURL()));
}

void fillProfileImage(NoteTemplate& note, const QVVeltoContact& contact, bool isHTML) {
    const std::string type = contact.avatar() ? "image/jpeg" : "image/png";
    const std::string hash = contact.avatar() ? imageHash(contact.avatar(), type) : placeholderAvatarHash();
    note.fill(QVProfileImagePlaceholder, profileImage(hash, type, isHTML, contact.profileImageQVURLString()));
}

void fillNonEmpty(NoteTemplate& note, std::string_view placeholder, const QVString& text) {
    if (text && !text->empty()) note.fill(placeholder, escapedMarkup(*text));
}

/// With neither, both lines keep their height; with one of them, the other's place stays as it is.
void fillTitleAndOrganisation(NoteTemplate& note, const QVVeltoContact& contact) {
    if (!contact.jobTitle() && !contact.company()) {
        note.fill(QVTitlePlaceholder, "&nbsp;");
        note.fill(QVOrgPlaceholder, "&nbsp;");
        return;
    }
    fillNonEmpty(note, QVTitlePlaceholder, contact.jobTitle());
    fillNonEmpty(note, QVOrgPlaceholder, contact.company());
}

}  // namespace

QVString QVVeltoNoteGenerator::noteFromObject(const std::shared_ptr<qv::Object>& object) {
    if (const auto card = std::dynamic_pointer_cast<QVBusinessCard>(object)) return noteFromCard(card);
    if (const auto contact = std::dynamic_pointer_cast<QVVeltoContact>(object)) return noteFromContactInfo(contact);
    return std::nullopt;
}

QVString QVVeltoNoteGenerator::noteFromCard(const std::shared_ptr<QVBusinessCard>& card) {
    if (!card) return std::nullopt;
    return noteFromContactInfo(QVVeltoContact::initWithCard(card));
}

QVString QVVeltoNoteGenerator::noteFromContactInfo(const std::shared_ptr<QVVeltoContact>& contact) {
    return noteFromContactInfo(contact, /*producingFullNote=*/true);
}

// Each step also fills the places that the texts of earlier steps brought in (labels are not escaped): the order
// counts.
QVString QVVeltoNoteGenerator::noteFromContactInfo(const std::shared_ptr<QVVeltoContact>& contact,
                                                   bool producingFullNote) {
    if (!contact) return std::nullopt;
    auto note =
        NoteTemplate::read(producingFullNote ? QVVeltoNoteTemplateFileName : QVVeltoNoteContactInfoTemplateFileName);
    if (!note) return std::nullopt;
    fillName(*note, *contact);
    fillLists(*note, *contact);
    fillLinks(*note, *contact);
    fillProfileImage(*note, *contact, /*isHTML=*/!producingFullNote);
    fillTitleAndOrganisation(*note, *contact);
    if (producingFullNote) note->fill(QVNoteAttachmentsPlaceHolder, attachments(contact->resourceHashes()));
    return note->text();
}

std::string QVVeltoNoteGenerator::XHTMLEncodedStringFromString(const std::string& string) const {
    return escapedMarkup(string);
}

std::string QVVeltoNoteGenerator::gtm_stringByEscapingForURLArgument(const std::string& string) const {
    return escapedURLArgument(string);
}

std::string QVVeltoNoteGenerator::encodedGoogleMapURLStringFromAddressString(const std::string& address) const {
    return mapLink(address);
}

std::string QVVeltoNoteGenerator::labelContentWithContextName(const QVString& name) const {
    return labelCell(name);
}

qv::Data QVVeltoNoteGenerator::dataForNSImage(const std::shared_ptr<qv::Image>& image, const std::string& mimeType) {
    return imageData(image, mimeType);
}

std::string QVVeltoNoteGenerator::lowerHexStringForDataHashFromNSImage(const std::shared_ptr<qv::Image>& image,
                                                                       const std::string& mimeType) {
    return imageHash(image, mimeType);
}

std::string QVVeltoNoteGenerator::hashStringForPlaceholderAvatar() {
    return placeholderAvatarHash();
}

std::shared_ptr<qv::Image> QVVeltoNoteGenerator::placeholderAvatar() {
    return qvnote::placeholderAvatar();
}

std::string QVVeltoNoteGenerator::profileImageStringFromImageHash(const QVString& hash, const QVString& type) {
    return profileImageStringFromImageHash(hash, type, /*isHTML=*/false, std::nullopt);
}

std::string QVVeltoNoteGenerator::profileImageStringFromImageHash(const QVString& hash, const QVString& type,
                                                                  bool isHTML, const QVString& qvAppURL) {
    return profileImage(hash, type, isHTML, qvAppURL);
}
