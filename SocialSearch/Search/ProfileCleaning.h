#pragma once

#include "QVSocialSearch/QVSocialProfile.h"

#include <memory>

/// A copy in which nothing from outside can harm: links other than http and https are left out, and labels lose the
/// characters of markup, because notes take labels as they are, and lists end after 500 entries. Null gives null.
std::shared_ptr<QVSocialProfile> cleanCopy(const std::shared_ptr<const QVSocialProfile>& profile);
