#pragma once

#include "QVSocialSearch/QVSocialProfile.h"
#include "QVSocialSearch/QVVCard.h"

#include <string>
#include <string_view>

/// What a card has only one of: texts without blanks at their ends, absent when nothing else is there.

/// The first that is not blank.
QVString textNamed(const QVVCard& card, std::string_view name);
/// The first part of ORG.
QVString companyOf(const QVVCard& card);
/// FN, or the parts of N in the order of a western name where an old card has no FN.
QVString nameOf(const QVVCard& card);

/// The first property of that name gets the text, or a new one when there is none or only empty ones. A blank text
/// changes nothing.
void writeText(QVVCard& card, const std::string& name, const QVString& text);
/// Departments behind the company stay.
void writeCompany(QVVCard& card, const QVString& company);
/// Sees to FN and N. A new display name brings a new N; one that stays keeps the N that somebody may have corrected. A
/// name that only stands for a missing one is not split.
void writeName(QVVCard& card, const QVSocialProfile& profile);
