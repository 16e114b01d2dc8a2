#pragma once

#include "QVSocialSearch/QVSocialSearchTypes.h"
#include "QVSocialSearch/VCard.h"

/// The label of an e-mail, a phone number or an address: the text of its group's X-ABLabel, or else the word for its
/// types; absent when there is neither.
QVString labelOfProperty(const VCard& card, const VCardProperty& property);

/// Adds the property to the card with the types for the label, or, when no type says just that, in a group of its own
/// with the label as X-ABLabel. Reading it back gives the label again (in the types' own case).
void addPropertyWithLabel(VCard& card, VCardProperty property, const QVString& label);
