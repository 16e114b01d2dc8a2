#pragma once

#include "Support/TestPixels.h"

/// A photograph of a printed business card on a wooden table, as a phone takes it: lit from one side, a little turned,
/// with grain. Nothing of it is read from anywhere; the same size gives the same picture each time.
namespace benchmarksupport {

testsupport::Pixels photographOfCard(int width, int height);

/// The same with the table cut away: transparent around the card, with an edge of a few half-transparent pixels.
testsupport::Pixels cutOutCard(int width, int height);

}  // namespace benchmarksupport
