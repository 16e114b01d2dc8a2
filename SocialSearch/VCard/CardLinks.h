#pragma once

#include "QVSocialSearch/QVSocialProfile.h"
#include "QVSocialSearch/QVVCard.h"

/// Pages and handles of a person on a card: X-SOCIALPROFILE, SOCIALPROFILE (RFC 9554), URL and X-TWITTER. Which network
/// a link belongs to is told by its host; only http and https count.

void readLinks(const QVVCard& card, QVSocialProfile& profile);

/// Writes the profile's pages and those handles that the card lacks, as X-SOCIALPROFILE.
void writeLinks(QVVCard& card, const QVSocialProfile& profile);
