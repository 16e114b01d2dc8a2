#pragma once

#include "Batch/BatchFolder.h"
#include "Batch/IndexPage.h"

#include <chrono>
#include <optional>
#include <vector>

namespace qvhost {

/// The files that list all finished cards of a batch: `contacts.csv`, `contacts.vcf`, `index.html`. They are made anew
/// from the cards' folders each time, card by card, and put in their places whole.
class BatchLists {
  public:
    explicit BatchLists(const BatchFolder& folder) : mFolder(folder) {}

    /// Writes them if something came since and it was not done just now: seldom enough to cost next to nothing.
    [[nodiscard]] std::optional<Failure> writeSometimes(const std::vector<IndexPage::Failed>& failed);
    [[nodiscard]] std::optional<Failure> write(const std::vector<IndexPage::Failed>& failed);

  private:
    using Clock = std::chrono::steady_clock;

    const BatchFolder& mFolder;
    Clock::time_point mWritten = Clock::now();
    Clock::duration mCost{};
};

}  // namespace qvhost
