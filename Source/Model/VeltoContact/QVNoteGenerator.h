#pragma once

#include "QVCardScan/QVBusinessCard.h"
#include "QVCardScan/QVVeltoContact.h"
#include "QVPlatform/Export.h"
#include "QVPlatform/Object.h"

/// What every note generator can do.
class QV_EXPORT QVNoteGenerating {
  public:
    virtual ~QVNoteGenerating() = default;
    /// `noteFromObject:` The note's content; absent when the object is of no known kind or no note could be made.
    virtual QVString noteFromObject(const std::shared_ptr<qv::Object>& object) = 0;
};

/// The base of note generators.
class QV_EXPORT QVNoteGenerator : public qv::Object {};

/// Writes contact notes in the host's note markup from the library's templates. Without state of its own: any thread
/// may use its own generator; all share the placeholder avatar and its hash, made once.
class QV_EXPORT QVVeltoNoteGenerator : public QVNoteGenerator, public QVNoteGenerating {
  public:
    QVString noteFromObject(const std::shared_ptr<qv::Object>& object) override;
    QVString noteFromCard(const std::shared_ptr<QVBusinessCard>& card);
    QVString noteFromContactInfo(const std::shared_ptr<QVVeltoContact>& contact);
    /// `noteFromContactInfo:producingFullNote:` The full note, or the contact-info block for display outside of a note.
    QVString noteFromContactInfo(const std::shared_ptr<QVVeltoContact>& contact, bool producingFullNote);

    std::string XHTMLEncodedStringFromString(const std::string& string) const;
    std::string gtm_stringByEscapingForURLArgument(const std::string& string) const;
    std::string encodedGoogleMapURLStringFromAddressString(const std::string& address) const;
    std::string labelContentWithContextName(const QVString& name) const;

    /// `lowerHexStringForDataHashFromNSImage:mimeType:`
    static std::string lowerHexStringForDataHashFromNSImage(const std::shared_ptr<qv::Image>& image,
                                                            const std::string& mimeType);
    static std::string hashStringForPlaceholderAvatar();
    static std::shared_ptr<qv::Image> placeholderAvatar();
    /// `profileImageStringFromImageHash:type:`
    static std::string profileImageStringFromImageHash(const QVString& hash, const QVString& type);
    /// `profileImageStringFromImageHash:type:isHTML:qvAppURL:`
    static std::string profileImageStringFromImageHash(const QVString& hash, const QVString& type, bool isHTML,
                                                       const QVString& qvAppURL);
};
