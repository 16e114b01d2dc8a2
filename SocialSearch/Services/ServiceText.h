#pragma once

#include "QVPlatform/JSON.h"
#include "QVSocialSearch/QVSocialSearchTypes.h"

/// A text of one line out of an answer: without line ends, control characters and blanks at its ends. Absent for what
/// is no text, is blank, or is longer than anything that stands on a card.
QVString lineOf(const qv::JSON& value);
