#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace qvhost {

/// Aligned columns for a terminal. Long and many-lined cells go on in their column, wide characters count as two
/// columns, and nothing in a cell can act on the terminal.
class TextTable {
  public:
    struct Column {
        /// Columns of the terminal after which a cell's text is broken.
        std::size_t maximumWidth = 60;
        bool isRightAligned = false;
    };

    explicit TextTable(std::vector<Column> columns) : mColumns(std::move(columns)) {}

    /// As many cells as there are columns.
    void addRow(const std::vector<std::string>& cells);

    bool isEmpty() const { return mRows.empty(); }
    /// The lines of all rows, without blanks at their ends.
    std::string text() const;

  private:
    /// The lines of each cell.
    using Row = std::vector<std::vector<std::string>>;

    std::vector<std::size_t> widths() const;

    std::vector<Column> mColumns;
    std::vector<Row> mRows;
};

}  // namespace qvhost
