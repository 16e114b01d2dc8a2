#pragma once

#include "Page/CardPile.h"
#include "Support/Result.h"

#include <filesystem>
#include <vector>

namespace qvhost {

/// Everything about some cards in one ZIP file: a folder for each, with what `scan -o` writes (the photographs among
/// it) and its vCard, and all contacts in one file of vCards.
namespace PileArchive {

/// Writes it into a new folder on the shelf, and says where. The caller removes the file.
Result<std::filesystem::path> write(const std::vector<CardPile::Card>& cards, const PictureShelf& shelf);

/// A name for a card's files, made of the person's name: letters, digits, blanks and hyphens. `number` goes first, so
/// that no two cards have the same.
std::string folderName(std::size_t number, const PileCard& card);

}  // namespace PileArchive

}  // namespace qvhost
