#pragma once

#include "QVCardScan/QVNotePlaceholders.h"
#include "QVCardScan/QVNoteRowFormats.h"
#include "QVCardScan/QVNoteStyles.h"
#include "QVPlatform/Export.h"

#include <string_view>

/// The definitions that several classes share: the social-search notification and the vocabulary of note markup.

/// Posted once for each social search that was asked for, without a sender; its user info has the keys below.
inline constexpr std::string_view kQVSocialSearchFinishedNotification = "QVSocialSearchFinishedNotification";
/// The request's id: the note's UUID (`std::string`).
inline constexpr std::string_view kQVSocialSearchRequestIDKey = "QVSocialSearchRequestIDKey";
/// What was found (`QVSocialSearchResultType`).
inline constexpr std::string_view kQVSocialSearchResultTypeKey = "QVSocialSearchResultTypeKey";
/// The profile that was merged into the contact; only when one was found.
inline constexpr std::string_view kQVSocialSearchSocialProfileKey = "QVSocialSearchSocialProfileKey";
/// The note's new content (`std::string`); only when a profile was found.
inline constexpr std::string_view kQVSocialSearchNewQVMLContentKey = "QVSocialSearchNewQVMLContentKey";
/// One image, the contact's new avatar; only when the profile brought one.
inline constexpr std::string_view kQVSocialSearchNewImageResourcesKey = "QVSocialSearchNewImageResourcesKey";
/// The contact; only when nothing was found or the time was out.
inline constexpr std::string_view kQVSocialSearchBaseVeltoContactKey = "QVSocialSearchBaseVeltoContactKey";
/// When the search was asked for; never part of a notification.
inline constexpr std::string_view kQVSocialSearchStartedDateKey = "QVSocialSearchStartedDateKey";

/// What came of a social search, by the profile pages that the found profile has.
enum QV_EXPORT QVSocialSearchResultType : int {
    /// No profile, or one with neither page.
    QVSocialSearchResultNotFound = 0,
    QVSocialSearchResultLinkedIn = 1,
    QVSocialSearchResultFacebook = 2,
    QVSocialSearchResultLinkedInAndFacebook = 3,
    /// No answer within the search time-out.
    QVSocialSearchResultTimedOut = 4,
};
