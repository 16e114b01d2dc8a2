#pragma once

#include "QVSocialSearch/QVSocialProfile.h"

#include <string>

/// Puts a page that a person published where the profile keeps it: the first one on LinkedIn and on Facebook, and every
/// handle on Twitter. Other pages have no place there.
void takePublishedLink(const std::string& link, QVSocialProfile& profile);
