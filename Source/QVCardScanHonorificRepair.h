#pragma once

#include "QVCardScanHonorifics.h"

#include <bitset>
#include <string>
#include <string_view>
#include <utility>

/// A name in which the dots of one honorific after the other are restored. It is kept folded beside, so that a search
/// compares units only.
class QVCardScanHonorificRepair {
  public:
    explicit QVCardScanHonorificRepair(std::u16string text);

    /// All of them, in the table's order.
    void restoreAll();
    std::u16string takeText() { return std::move(mText); }

  private:
    /// Pairs of neighbouring units, by their five lowest bits: what is not in it does not occur.
    using Pairs = std::bitset<1024>;
    struct FoldedHonorific;

    static std::size_t pairAt(std::u16string_view text, std::size_t index);
    void fold();
    bool mayHold(const FoldedHonorific& honorific) const;
    bool isBounded(std::size_t position, std::size_t length) const;
    void restore(const FoldedHonorific& honorific);

    std::u16string mText;
    std::u16string mFolded;
    Pairs mPairs;
};
