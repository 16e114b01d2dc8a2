#pragma once

#include "QVPlatform/Data.h"
#include "QVSocialSearch/QVVCard.h"

#include <optional>

/// The picture inside of the card: base64 (2.1, 3.0) or a data URI (4.0). Nothing when the card has none, or only a
/// link.
std::optional<qv::Data> pictureOfCard(const QVVCard& card);

/// Puts a picture into the card, in JPEG or PNG and at most 512 pixels on each side. A picture that the card only links
/// to stays, as does the card when the bytes are no picture or are the card's own.
void writePicture(QVVCard& card, const qv::Data& picture);
