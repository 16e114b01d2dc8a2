#include "Fields/LabelColumn.h"

#include "Fields/Handle.h"
#include "Fields/Phone.h"
#include "Text/Layout.h"
#include "Text/Letters.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace qv::recognition {
namespace {

constexpr float kLabelDistance = 9;  // in type sizes, from a label to the number on its right
constexpr float kLostLabel = 0.65F;

bool standsLeftOf(const TextLine& label, const TextLine& line) {
    const float gap = line.box.x - label.box.right();
    return overlapY(line.box, label.box) > 0.5F * std::min(line.box.h, label.box.h) && gap > -1 &&
           gap < kLabelDistance * line.size;
}

std::optional<std::size_t> valueBeside(const TextLine& label, const std::vector<TextLine>& lines) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].words.size() == 1 && standsLeftOf(label, lines[i])) return i;
    }
    return std::nullopt;
}

std::optional<NumberKind> labelLeftOf(const TextLine& line, const std::vector<TextLine>& lines) {
    for (const auto& label : lines) {
        if (standsLeftOf(label, line)) {
            if (const auto kind = labelOf(label)) return kind;
        }
    }
    return std::nullopt;
}

bool startsWithNumber(const TextLine& line) {
    const std::string text = line.text();
    return !text.empty() && std::string_view("+(0123456789").find(text.front()) != std::string_view::npos;
}

/// Whether a line stands under another that has a telephone's label in the column on its left.
bool standsUnderLabelled(const TextLine& line, const std::vector<TextLine>& lines) {
    return std::any_of(lines.begin(), lines.end(), [&](const TextLine& other) {
        return startsWithNumber(other) && other.box.y < line.box.y && std::abs(other.box.x - line.box.x) < line.size &&
               labelLeftOf(other, lines) == NumberKind::Phone;
    });
}

bool isIn(const Field& field, const TextLine& line) {
    return std::abs(field.box.x - line.box.x) < 1 && std::abs(field.box.y - line.box.y) < line.box.h / 2;
}

}  // namespace

std::optional<NumberKind> labelBeside(const TextLine& line, const std::vector<TextLine>& lines) {
    const TextLine* nearest = nullptr;
    for (const auto& label : lines) {
        if (!labelOf(label)) continue;
        const bool above = label.box.centreY() < line.box.y && followsInColumn(label, line);
        if (standsLeftOf(label, line)) return labelOf(label);
        if (above) nearest = &label;
    }
    return nearest == nullptr ? std::nullopt : labelOf(*nearest);
}

std::vector<TextLine> withHandleLabels(std::vector<TextLine> lines) {
    std::vector<TextLine> rest;
    std::vector<bool> joined(lines.size(), false);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (joined[i] || !isHandleLabel(lines[i])) continue;
        const auto value = valueBeside(lines[i], lines);
        if (!value || joined[*value]) continue;
        std::vector<Word> words = lines[i].words;
        words.insert(words.end(), lines[*value].words.begin(), lines[*value].words.end());
        joined[i] = joined[*value] = true;
        rest.push_back(makeLine(std::move(words)));
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!joined[i]) rest.push_back(std::move(lines[i]));
    }
    return rest;
}

void giveLostFaxLabel(std::vector<Field>& fields, const std::vector<TextLine>& lines) {
    std::vector<Field*> lost;
    for (auto& field : fields) {
        if (field.type == FieldType::Fax) return;
        if (field.type != FieldType::Phone) continue;
        const bool isLost = std::any_of(lines.begin(), lines.end(), [&](const TextLine& line) {
            return isIn(field, line) && startsWithNumber(line) && !labelBeside(line, lines) &&
                   standsUnderLabelled(line, lines);
        });
        if (isLost) lost.push_back(&field);
    }
    if (lost.size() != 1) return;
    lost.front()->type = FieldType::Fax;
    lost.front()->likelihood = kLostLabel;
}

}  // namespace qv::recognition
