#pragma once

#include "QVPlatform/Data.h"
#include "QVSocialSearch/QVLinkFetcher.h"

#include <optional>

/// The picture that a link out of a profile leads to, by the rules of `QVLinkFetcher`. Absent when there is none, it
/// does not come in time, or its bytes are no picture.
std::optional<qv::Data> pictureAtLink(const QVString& link, QVLinkFetcher::Clock::time_point deadline);

bool isPicture(const qv::Data& bytes);
