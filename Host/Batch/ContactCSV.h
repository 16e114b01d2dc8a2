#pragma once

#include "Batch/CardRecord.h"

#include <string>
#include <string_view>

/// Contacts as a table for spreadsheets: RFC 4180 in UTF-8, lines end with CR LF, the first one names the columns.
namespace qvhost::ContactCSV {

std::string header();

/// One line. Several values of a kind stand in one cell with "; " between them.
std::string row(const CardRecord& card);

/// One cell: in quotes where that is needed. What a spreadsheet would take for a formula (a beginning of =, +, -, @)
/// gets an apostrophe in front, for what is printed on a card is anybody's text; telephone numbers stay as they are,
/// because other programs read them too and digits and signs alone compute nothing but a number.
std::string cell(std::string_view text);

}  // namespace qvhost::ContactCSV
