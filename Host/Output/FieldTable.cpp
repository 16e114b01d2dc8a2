#include "Output/FieldTable.h"

#include "Output/TextTable.h"
#include "QVCardScan/QVBusinessCardField.h"
#include "Support/TerminalText.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace qvhost {
namespace {

using Field = std::shared_ptr<QVBusinessCardField>;

struct Kind {
    std::string_view name;
    /// Its place in the table: who, where they work, how to reach them.
    int place = 0;
};

/// By field type; type 0 is none of these.
constexpr std::array<Kind, 13> kKinds = {{{"", 13},
                                          {"Name", 1},
                                          {"Email", 5},
                                          {"Phone", 6},
                                          {"Title", 2},
                                          {"Company", 4},
                                          {"Department", 3},
                                          {"URL", 9},
                                          {"Address", 10},
                                          {"Fax", 8},
                                          {"Mobile", 7},
                                          {"Twitter", 11},
                                          {"Skype", 12}}};

const Kind& kindOf(const QVBusinessCardField& field) {
    const auto type = static_cast<std::size_t>(field.type());
    return field.type() > 0 && type < kKinds.size() ? kKinds[type] : kKinds[0];
}

std::string nameOf(const QVBusinessCardField& field) {
    const Kind& kind = kindOf(field);
    if (!kind.name.empty()) return std::string(kind.name);
    const std::string name = TerminalText::printable(field.name().value_or(""));
    return name.empty() || TerminalText::displayWidth(name) > 20 ? "(other)" : "(" + name + ")";
}

std::vector<Field> inOrder(std::vector<Field> fields) {
    std::stable_sort(fields.begin(), fields.end(),
                     [](const Field& one, const Field& other) { return kindOf(*one).place < kindOf(*other).place; });
    return fields;
}

}  // namespace

std::string fieldTable(const std::shared_ptr<QVBusinessCard>& card) {
    if (!card || !card->fields() || card->fields()->empty()) return "No fields were recognised.\n";
    TextTable table({{}, {}, {.isRightAligned = true}});
    table.addRow({"Field", "Text", "Confidence"});
    for (const Field& field : inOrder(*card->fields()))
        table.addRow({nameOf(*field), field->text().value_or(""), std::to_string(field->weight())});
    return table.text();
}

}  // namespace qvhost
