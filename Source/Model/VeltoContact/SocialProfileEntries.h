#pragma once

#include "QVCardScan/QVVeltoContact.h"
#include "QVSocialSearch/QVSocialSearchTypes.h"

/// A contact's entries as a social profile takes them in; never null. Entries without a text are left out.
QVEmailSet profileEmailsOf(const QVVeltoContact& contact);
QVPhoneNumberSet profilePhoneNumbersOf(const QVVeltoContact& contact);
