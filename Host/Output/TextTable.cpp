#include "Output/TextTable.h"

#include "Support/TerminalText.h"

#include <algorithm>
#include <string_view>

namespace qvhost {
namespace {

constexpr std::string_view kGap = "  ";

std::string padded(const std::string& text, std::size_t width, bool isRightAligned) {
    const std::size_t taken = TerminalText::displayWidth(text);
    const std::string blanks(width - std::min(width, taken), ' ');
    return isRightAligned ? blanks + text : text + blanks;
}

std::size_t lineCount(const std::vector<std::vector<std::string>>& row) {
    std::size_t count = 0;
    for (const auto& cell : row)
        count = std::max(count, cell.size());
    return count;
}

void appendLine(std::string& text, std::string line) {
    line.resize(line.find_last_not_of(' ') + 1);
    text.append(line).append("\n");
}

}  // namespace

void TextTable::addRow(const std::vector<std::string>& cells) {
    Row row;
    for (std::size_t i = 0; i < mColumns.size(); ++i)
        row.push_back(TerminalText::wrapped(cells[i], mColumns[i].maximumWidth));
    mRows.push_back(std::move(row));
}

std::vector<std::size_t> TextTable::widths() const {
    std::vector<std::size_t> widths(mColumns.size());
    for (const Row& row : mRows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            for (const std::string& line : row[i])
                widths[i] = std::max(widths[i], TerminalText::displayWidth(line));
        }
    }
    return widths;
}

std::string TextTable::text() const {
    const std::vector<std::size_t> columnWidths = widths();
    std::string text;
    for (const Row& row : mRows) {
        for (std::size_t line = 0; line < lineCount(row); ++line) {
            std::string shown;
            for (std::size_t i = 0; i < row.size(); ++i) {
                const std::string cell = line < row[i].size() ? row[i][line] : "";
                shown.append(i == 0 ? "" : kGap).append(padded(cell, columnWidths[i], mColumns[i].isRightAligned));
            }
            appendLine(text, std::move(shown));
        }
    }
    return text;
}

}  // namespace qvhost
