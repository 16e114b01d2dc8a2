#pragma once

#include "Soak/CardPictures.h"
#include "Soak/SoakCards.h"

namespace soak {

/// The cards that the stub server knows: every kind, every failure.
class PlannedCards : public SoakCards {
  public:
    SoakCard card(int number) const override;
    std::string problemOf(int number, const QVCardProcessingResponse& response) const override;
    bool hasPerson(int number) const override;

  private:
    const CardPictures mPictures;
};

}  // namespace soak
