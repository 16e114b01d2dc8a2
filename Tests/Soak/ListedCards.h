#pragma once

#include "Soak/SoakCards.h"

#include <filesystem>
#include <vector>

namespace soak {

/// Photographs for a real server, from a list with a line for each card: the language, the front and, where there is
/// one, the back, with tabs in between. What they say is not judged here; that they are read is.
class ListedCards : public SoakCards {
  public:
    /// Throws `std::runtime_error` when there is no such list, or nothing in it.
    explicit ListedCards(const std::filesystem::path& list);

    /// Begins anew after the list's end.
    SoakCard card(int number) const override;
    std::string problemOf(int number, const QVCardProcessingResponse& response) const override;
    bool hasPerson(int) const override { return false; }

  private:
    struct Line {
        std::string language;
        std::vector<std::filesystem::path> pictures;
    };
    std::vector<Line> mLines;
};

}  // namespace soak
