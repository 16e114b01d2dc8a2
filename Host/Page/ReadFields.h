#pragma once

#include "Page/PileCard.h"

namespace qvhost {

/// Gives the card what the recognition server's answers to its pictures say, each field with the picture it lies on.
/// Absent: the picture was not read.
void takeReadFields(PileCard& card, const QVString& front, const QVString& back);

}  // namespace qvhost
