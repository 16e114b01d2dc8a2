#pragma once

#include "QVSocialSearch/QVSocialProfile.h"

#include <memory>
#include <vector>

/// One profile out of several, the most trusted first; null where there was none. Null when all are.
std::shared_ptr<QVSocialProfile> mergedProfile(const std::vector<std::shared_ptr<QVSocialProfile>>& profiles);
