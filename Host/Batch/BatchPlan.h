#pragma once

#include "Batch/BatchFolder.h"
#include "Batch/CardPairs.h"
#include "Batch/CardRecord.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace qvhost {

/// A card that is to be read, and the name of its folder.
struct PlannedCard {
    std::string name;
    BatchCard card;
};

/// What is asked for besides reading; a finished card lacks what was not asked for at the time.
struct BatchWishes {
    std::optional<std::string> language;
    bool comparesContacts = false;
    bool searches = false;
    /// Where contacts are saved; empty when they are not.
    std::string savesIn;
};

/// Which cards of a batch are to be read, and which are finished: with the same pictures, and all that is wished for.
/// Pictures are the same when place, size and time of change are, or else the bytes; a finished card keeps its name.
struct BatchPlan {
    std::vector<PlannedCard> cards;
    std::size_t finished = 0;

    static BatchPlan make(const BatchFolder& folder, std::vector<BatchCard> cards, const BatchWishes& wishes);
};

/// A folder's name for a card: the file's name without its ending and without what other systems have no folders by.
std::string folderNameFor(const std::filesystem::path& front);

}  // namespace qvhost
