#include "Output/FieldTable.h"

#include "QVCardScan/QVBusinessCardField.h"
#include "Support/TerminalText.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace qvhost {
namespace {

constexpr std::size_t kTextWidth = 60;
constexpr std::string_view kGap = "  ";

struct Row {
    std::string kind;
    std::vector<std::string> text;
    std::string confidence;
};

std::string kindOf(const QVBusinessCardField& field) {
    constexpr std::array<std::string_view, 13> kNames = {"",        "Name",       "Email", "Phone",   "Title",
                                                         "Company", "Department", "URL",   "Address", "Fax",
                                                         "Mobile",  "Twitter",    "Skype"};
    const auto type = static_cast<std::size_t>(field.type());
    if (field.type() > 0 && type < kNames.size()) return std::string(kNames[type]);
    const std::string name = TerminalText::printable(field.name().value_or(""));
    return name.empty() || TerminalText::displayWidth(name) > 20 ? "(other)" : "(" + name + ")";
}

std::vector<Row> rowsOf(const std::vector<std::shared_ptr<QVBusinessCardField>>& fields) {
    std::vector<Row> rows{{"Field", {"Text"}, "Confidence"}};
    for (const auto& field : fields) {
        rows.push_back({kindOf(*field), TerminalText::wrapped(field->text().value_or(""), kTextWidth),
                        std::to_string(field->weight())});
    }
    return rows;
}

std::string padded(const std::string& text, std::size_t width) {
    const std::size_t taken = TerminalText::displayWidth(text);
    return text + std::string(width - std::min(width, taken), ' ');
}

std::string rightAligned(const std::string& text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

struct Widths {
    std::size_t kind = 0;
    std::size_t text = 0;
};

Widths widthsOf(const std::vector<Row>& rows) {
    Widths widths;
    for (const Row& row : rows) {
        widths.kind = std::max(widths.kind, TerminalText::displayWidth(row.kind));
        for (const std::string& line : row.text)
            widths.text = std::max(widths.text, TerminalText::displayWidth(line));
    }
    return widths;
}

void appendRow(std::string& table, const Row& row, const Widths& widths) {
    table += padded(row.kind, widths.kind).append(kGap) + padded(row.text.front(), widths.text).append(kGap);
    table += rightAligned(row.confidence, std::string_view("Confidence").size()) + "\n";
    for (std::size_t i = 1; i < row.text.size(); ++i)
        table += std::string(widths.kind, ' ').append(kGap) + row.text[i] + "\n";
}

}  // namespace

std::string fieldTable(const std::shared_ptr<QVBusinessCard>& card) {
    if (!card || !card->fields() || card->fields()->empty()) return "No fields were recognised.\n";
    const std::vector<Row> rows = rowsOf(*card->fields());
    const Widths widths = widthsOf(rows);
    std::string table;
    for (const Row& row : rows)
        appendRow(table, row, widths);
    return table;
}

}  // namespace qvhost
