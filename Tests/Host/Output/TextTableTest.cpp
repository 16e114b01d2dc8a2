#include "Output/TextTable.h"

#include <gtest/gtest.h>

namespace {

using qvhost::TextTable;

TEST(TextTable, AlignsColumnsByWhatATerminalShows) {
    TextTable table({{}, {.isRightAligned = true}, {}});
    table.addRow({"Name", "Count", "Note"});
    table.addRow({"Zo\xC3\xAB", "7", "a"});
    table.addRow({"\xE5\xB1\xB1\xE7\x94\xB0", "1234567", "b"});
    EXPECT_EQ(table.text(),
              "Name    Count  Note\n"
              "Zo\xC3\xAB         7  a\n"
              "\xE5\xB1\xB1\xE7\x94\xB0  1234567  b\n");
}

TEST(TextTable, GoesOnInTheColumn) {
    TextTable table({{.maximumWidth = 5}, {.maximumWidth = 6}});
    table.addRow({"one two", "x"});
    table.addRow({"y", "three\nfour five"});
    EXPECT_EQ(table.text(), "one  x\ntwo\ny    three\n     four\n     five\n");
}

TEST(TextTable, NothingInItActsOnTheTerminal) {
    TextTable table({{}, {}});
    table.addRow({"a\x1b[31m", "b\tc\r"});
    EXPECT_EQ(table.text().find('\x1b'), std::string::npos);
    EXPECT_EQ(table.text().find('\r'), std::string::npos);
    EXPECT_NE(table.text().find("a\\x1b[31m"), std::string::npos);
}

TEST(TextTable, WithoutRowsIsEmpty) {
    const TextTable table({{}, {}});
    EXPECT_TRUE(table.isEmpty());
    EXPECT_EQ(table.text(), "");
}

}  // namespace
