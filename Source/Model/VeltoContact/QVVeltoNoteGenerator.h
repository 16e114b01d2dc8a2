#pragma once

#include "QVCardScan/QVBusinessCard.h"
#include "QVCardScan/QVNoteGenerating.h"
#include "QVCardScan/QVNoteGenerator.h"
#include "QVCardScan/QVVeltoContact.h"
#include "QVPlatform/Data.h"
#include "QVPlatform/Export.h"
#include "QVPlatform/Image.h"

/// Writes contact notes in the host's note markup from the library's templates. It has no state of its own: any thread
/// may use any generator, several at once, as long as nobody changes the contact meanwhile. What all share is the
/// placeholder avatar and its hash, each made on first use and kept while the process lives.
///
/// Everything a note is built from is text in UTF-8. Texts of the contact are escaped; labels, hashes, image types and
/// URL strings are put in as they are. Characters that no markup can hold (control characters) pass through.
class QV_EXPORT QVVeltoNoteGenerator : public QVNoteGenerator, public QVNoteGenerating {
  public:
    /// `noteFromObject:` The full note of a `QVBusinessCard` or a `QVVeltoContact`; absent for anything else.
    QVString noteFromObject(const std::shared_ptr<qv::Object>& object) override;
    /// `noteFromCard:` The full note of the contact that the card makes; absent without a card.
    QVString noteFromCard(const std::shared_ptr<QVBusinessCard>& card);
    /// `noteFromContactInfo:` The full note.
    QVString noteFromContactInfo(const std::shared_ptr<QVVeltoContact>& contact);
    /// `noteFromContactInfo:producingFullNote:` The full note, or the contact-info block for display outside of a note.
    /// The template is read on every call; absent when it cannot be read (logged), and without a contact.
    QVString noteFromContactInfo(const std::shared_ptr<QVVeltoContact>& contact, bool producingFullNote);

    /// `XHTMLEncodedStringFromString:` The five characters of markup (& < > " ') as entities, nothing else changed.
    std::string XHTMLEncodedStringFromString(const std::string& string) const;
    /// `gtm_stringByEscapingForURLArgument:` Everything but the unreserved characters of RFC 3986 percent-escaped as
    /// UTF-8.
    std::string gtm_stringByEscapingForURLArgument(const std::string& string) const;
    /// `encodedGoogleMapURLStringFromAddressString:` The map search for an address, escaped for an attribute.
    std::string encodedGoogleMapURLStringFromAddressString(const std::string& address) const;
    /// `labelContentWithContextName:` The label cell of a row; an absent name gives an empty one. The name is markup:
    /// it is not escaped.
    std::string labelContentWithContextName(const QVString& name) const;

    /// `dataForNSImage:mimeType:` The bytes that stand behind an image's hash, for hosts that store the picture beside
    /// the note: JPEG of the best quality for "image/jpeg", PNG for "image/png", TIFF for anything else. The same image
    /// gives the same bytes each time. Empty for an image that is null or cannot be encoded.
    static qv::Data dataForNSImage(const std::shared_ptr<qv::Image>& image, const std::string& mimeType);
    /// `lowerHexStringForDataHashFromNSImage:mimeType:` The MD5 of those bytes, 32 lower-case hexadecimal digits.
    static std::string lowerHexStringForDataHashFromNSImage(const std::shared_ptr<qv::Image>& image,
                                                            const std::string& mimeType);
    /// The hash of the placeholder avatar as "image/png": made once, whatever it turns out to be.
    static std::string hashStringForPlaceholderAvatar();
    /// The library's placeholder avatar; null while the resource cannot be found, and looked for again each time.
    static std::shared_ptr<qv::Image> placeholderAvatar();

    /// `profileImageStringFromImageHash:type:` The media reference in note markup.
    static std::string profileImageStringFromImageHash(const QVString& hash, const QVString& type);
    /// `profileImageStringFromImageHash:type:isHTML:qvAppURL:` The media reference, or as HTML the element that shows
    /// the picture at the URL (absent counts as empty). Without hash or type, an empty box.
    static std::string profileImageStringFromImageHash(const QVString& hash, const QVString& type, bool isHTML,
                                                       const QVString& qvAppURL);
};
