#pragma once

#include "QVCardScan/QVCardScanDefines.h"
#include "QVCardScan/QVCardScanTypes.h"
#include "QVCardScan/QVVeltoContact.h"
#include "QVPlatform/Export.h"
#include "QVPlatform/NotificationCenter.h"
#include "QVSocialSearch/QVSocialProfile.h"

#include <optional>
#include <string>

/// What a social search's notification says, read from its dictionary. Objects are those of the notification.
struct QV_EXPORT QVSocialSearchResult {
    /// The note's UUID.
    std::string requestID;
    /// What was found.
    QVSocialSearchResultType resultType = QVSocialSearchResultNotFound;
    /// Set when a profile was found; null otherwise.
    std::shared_ptr<QVSocialProfile> socialProfile;
    /// Set when a profile was found.
    QVString newQVMLContent;
    /// One image, when the profile brought an avatar; null otherwise.
    QVImageArray newImageResources;
    /// Set when nothing was found or the time was out; null otherwise.
    std::shared_ptr<QVVeltoContact> baseVeltoContact;

    /// Nothing for another notification, or one without a request's id and a result type.
    static std::optional<QVSocialSearchResult> fromNotification(const qv::Notification& notification);
};
