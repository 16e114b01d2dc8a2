#pragma once

#include "QVPlatform/JSON.h"
#include "QVSocialSearch/QVSocialProfile.h"

#include <memory>

/// What the service's profile object says that a social profile has a place for; without the picture. Members of
/// another kind than documented are left out.
std::shared_ptr<QVSocialProfile> profileOfGravatar(const qv::JSON& object);

/// The link to the profile's picture: 512 pixels, and no answer in place of a stand-in for people without one. Absent
/// when there is none.
QVString pictureLinkOfGravatar(const qv::JSON& object);
