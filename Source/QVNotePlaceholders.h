#pragma once

#include <string_view>

/// The places of a note template that are filled with a contact. Each is a markup comment, so that one that nobody
/// fills renders as nothing.

/// Filled by the note generator.
inline constexpr std::string_view QVDisplayAsPlaceholder = "<!--x-quorvane:display-as-->";
inline constexpr std::string_view QVTitlePlaceholder = "<!--x-quorvane:contact-title-->";
inline constexpr std::string_view QVOrgPlaceholder = "<!--x-quorvane:contact-org-->";
inline constexpr std::string_view QVEmailsPlaceholder = "<!--x-quorvane:emails-->";
inline constexpr std::string_view QVPhonesPlaceholder = "<!--x-quorvane:phones-->";
inline constexpr std::string_view QVTwittersPlaceholder = "<!--x-quorvane:twitters-->";
inline constexpr std::string_view QVWeibosPlaceholder = "<!--x-quorvane:weibos-->";
inline constexpr std::string_view QVLinkedInPlaceholder = "<!--x-quorvane:linkedin-->";
inline constexpr std::string_view QVFacebookPlaceholder = "<!--x-quorvane:facebook-->";
inline constexpr std::string_view QVProfileImagePlaceholder = "<!--x-quorvane:profile-image-->";
inline constexpr std::string_view QVPlaceAddressPlaceholder = "<!--x-quorvane:place-address-->";
inline constexpr std::string_view QVNoteAttachmentsPlaceHolder = "<!--x-quorvane:attachments-->";
/// The same text as `QVProfileImagePlaceholder`, under its second published name.
inline constexpr std::string_view QVNoteAvatarPlaceHolder = "<!--x-quorvane:profile-image-->";

/// Left for the host's own templates and editor; the generator never replaces them.
inline constexpr std::string_view QVFamilyNamePlaceholder = "<!--x-quorvane:family-name-->";
inline constexpr std::string_view QVGivenNamePlaceholder = "<!--x-quorvane:given-name-->";
inline constexpr std::string_view QVPFamilyNamePlaceholder = "<!--x-quorvane:phonetic-family-name-->";
inline constexpr std::string_view QVPGivenNamePlaceholder = "<!--x-quorvane:phonetic-given-name-->";
inline constexpr std::string_view QVURLPlaceholder = "<!--x-quorvane:contact-url-->";
inline constexpr std::string_view QVDatePlaceholder = "<!--x-quorvane:date-created-->";
inline constexpr std::string_view QVPlaceNamePlaceholder = "<!--x-quorvane:place-name-->";
inline constexpr std::string_view QVNoteContentPlaceholder = "<!--x-quorvane:note-->";

/// The templates among the library's resources: the full note and the contact-info block, and the extension of both.
inline constexpr std::string_view QVVeltoNoteTemplateFileName = "velto-note-template-new";
inline constexpr std::string_view QVVeltoNoteContactInfoTemplateFileName = "velto-note-contact-info-template";
inline constexpr std::string_view QVVeltoNoteTemplateFileType = "html";
