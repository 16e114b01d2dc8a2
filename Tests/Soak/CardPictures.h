#pragma once

#include "QVCardScan/QVCardScanTypes.h"
#include "QVPlatform/Data.h"
#include "Soak/PlannedCard.h"

#include <vector>

namespace soak {

/// Pictures of every format and of many sizes, made once; each request gets an image of its own over a copy of one.
class CardPictures {
  public:
    CardPictures();

    /// The pictures of that card's request.
    QVImageArray picturesOf(const PlannedCard& card) const;

  private:
    std::vector<qv::Data> mFronts;
    std::vector<qv::Data> mBacks;
    std::vector<qv::Data> mBroken;
};

}  // namespace soak
