#pragma once

#include "Batch/CardRecord.h"

#include <filesystem>
#include <string>
#include <vector>

/// The page that shows a batch: for any browser, from the disk, with nothing loaded but the cards' pictures beside it.
/// What stands on cards is text there, never markup.
namespace qvhost::IndexPage {

/// What could not be read, in words.
struct Failed {
    std::string file;
    std::string why;
};

std::string head(std::size_t cards, const std::vector<Failed>& failed);
/// One card; `folder` is its own, where its note lies.
std::string card(const CardRecord& card, const std::filesystem::path& folder);
std::string tail();

}  // namespace qvhost::IndexPage
