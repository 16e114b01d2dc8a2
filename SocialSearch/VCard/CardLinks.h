#pragma once

#include "QVSocialSearch/QVSocialProfile.h"
#include "QVSocialSearch/VCard.h"

/// Pages and handles of a person on a card: X-SOCIALPROFILE, SOCIALPROFILE (RFC 9554), URL and X-TWITTER. Which network
/// a link belongs to is told by its host; only http and https count.

void readLinks(const VCard& card, QVSocialProfile& profile);

/// Writes the profile's pages and those handles that the card lacks, as X-SOCIALPROFILE.
void writeLinks(VCard& card, const QVSocialProfile& profile);
