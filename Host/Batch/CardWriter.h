#pragma once

#include "Batch/BatchFolder.h"
#include "Batch/CardPairs.h"
#include "Batch/CardRecord.h"
#include "People/PersonOutcome.h"
#include "Scan/CardScan.h"

#include <optional>
#include <string>
#include <vector>

namespace qvhost {

/// Everything that is known of one card of a batch when it was read.
struct ReadCard {
    std::string name;
    std::vector<PictureState> states;
    std::vector<CardPicture> pictures;
    /// The language that it was read in, if one was given.
    std::optional<std::string> language;
    ScanOutcome outcome;
    PersonOutcome person;
    /// What failed and what a person should know besides, in words.
    std::vector<std::string> problems;
    std::vector<std::string> remarks;
    /// Where its contact was saved; empty when it was not.
    std::string savedIn;
    /// The UID of its contact.
    std::string UID;
};

/// The UID of a new contact from these pictures, always the same, so that no card becomes two contacts.
std::string contactUID(const std::vector<PictureState>& pictures);

/// Writes a card's folder, whole or not at all: what `scan` writes, thumbnails, `contact.vcf` and `batch.json`.
/// Nothing, and the record as it was written, or why not.
[[nodiscard]] std::optional<Failure> writeCard(const BatchFolder& folder, const ReadCard& card, CardRecord& record);

}  // namespace qvhost
