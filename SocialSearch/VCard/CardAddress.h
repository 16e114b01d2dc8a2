#pragma once

#include "QVSocialSearch/QVSocialProfile.h"
#include "QVSocialSearch/QVVCard.h"

/// The card's postal addresses as they are written on a letter: the text of ADR's LABEL (4.0) where there is one, else
/// box, extension and street, then "code locality" or "locality, region code", then the country, one line each.
QVPostalAddressList addressesOfCard(const QVVCard& card);

/// Adds the addresses that the card lacks (white space, commas and case do not count). Where a text's street ends and
/// its town begins is not guessed: all of it is the ADR's street.
void writeAddresses(QVVCard& card, const QVPostalAddressList& addresses);
