#pragma once

#include "QVSocialSearch/QVSocialProfile.h"

#include <memory>

/// What a record has only one of, as it was when it was read.
struct QVRecordAsRead {
    QVString formattedName;
    QVString jobTitle;
    QVString company;
    QVString profileURLLinkedInPublic;
    QVString profileURLFacebook;
    /// Of the picture; absent when there was none.
    QVString pictureDigest;
};

/// What a profile says that was just read.
std::shared_ptr<const QVRecordAsRead> recordAsRead(const QVSocialProfile& profile);

/// The profile without those of its values that it was read with.
QVSocialProfile changesSinceRead(const QVSocialProfile& profile);
