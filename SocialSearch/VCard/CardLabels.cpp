#include "VCard/CardLabels.h"

#include "Merging/EntryMeaning.h"
#include "QVPlatform/Text.h"
#include "VCard/VCardEncoding.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace {

/// What types of a property are called. Rows with more types come first, so that they win.
struct LabelRow {
    std::string_view property;
    std::array<std::string_view, 2> types;
    std::string_view label;
};

constexpr std::array<LabelRow, 14> kLabels{{
    {"TEL", {"WORK", "FAX"}, "Work Fax"},
    {"TEL", {"HOME", "FAX"}, "Home Fax"},
    {"TEL", {"WORK", "CELL"}, "Work Mobile"},
    {"TEL", {"CELL", ""}, "Mobile"},
    {"TEL", {"FAX", ""}, "Fax"},
    {"TEL", {"PAGER", ""}, "Pager"},
    {"TEL", {"WORK", ""}, "Work"},
    {"TEL", {"HOME", ""}, "Home"},
    {"TEL", {"VOICE", ""}, "Phone"},
    {"EMAIL", {"WORK", ""}, "Work"},
    {"EMAIL", {"HOME", ""}, "Home"},
    {"EMAIL", {"INTERNET", ""}, "Email"},
    {"ADR", {"WORK", ""}, "Work"},
    {"ADR", {"HOME", ""}, "Home"},
}};

bool hasAllTypes(const std::vector<std::string>& types, const LabelRow& row) {
    return std::all_of(row.types.begin(), row.types.end(), [&](std::string_view type) {
        return type.empty() || std::find(types.begin(), types.end(), type) != types.end();
    });
}

/// Labels from one maker's programs are wrapped when they are standard ones: "_$!<Mobile>!$_".
std::string withoutWrapping(std::string text) {
    constexpr std::string_view kBegin = "_$!<";
    constexpr std::string_view kEnd = ">!$_";
    if (text.size() <= kBegin.size() + kEnd.size() || !text.starts_with(kBegin) || !text.ends_with(kEnd)) return text;
    return text.substr(kBegin.size(), text.size() - kBegin.size() - kEnd.size());
}

const LabelRow* rowForLabel(const QVVCardProperty& property, const std::string& label) {
    const auto row = std::find_if(kLabels.begin(), kLabels.end(), [&](const LabelRow& candidate) {
        return property.isNamed(candidate.property) &&
               qv::Text::lowercased(candidate.label) == qv::Text::lowercased(label);
    });
    return row == kLabels.end() ? nullptr : row;
}

void addTypes(QVVCardProperty& property, const LabelRow& row) {
    QVVCardParameter parameter{.name = "TYPE", .values = {}};
    // 4.0 has no type for what every address is.
    const bool isInternet = property.isNamed("EMAIL") && property.version != QVVCardVersion::V40;
    if (isInternet) parameter.values.emplace_back("INTERNET");
    for (const std::string_view type : row.types) {
        if (!type.empty() && type != "INTERNET") parameter.values.emplace_back(type);
    }
    if (!parameter.values.empty()) property.parameters.push_back(parameter);
}

/// 2.1 has no lists of types: each stands alone.
void separateTypes(QVVCardProperty& property) {
    std::vector<QVVCardParameter> parameters;
    for (const QVVCardParameter& parameter : property.parameters) {
        for (const std::string& value : parameter.values)
            parameters.push_back({.name = parameter.name == "TYPE" ? "" : parameter.name, .values = {value}});
    }
    property.parameters = std::move(parameters);
}

bool canBeTypes(const QVVCardProperty& property, const LabelRow* row) {
    // Without INTERNET there is no type that says "Email".
    return row != nullptr && !(property.version == QVVCardVersion::V40 && row->types[0] == "INTERNET");
}

}  // namespace

CardLabels::CardLabels(const QVVCard& card) {
    for (const QVVCardProperty* property : card.propertiesNamed("X-ABLABEL")) {
        const std::string text = withoutWrapping(property->text());
        // The first one counts.
        if (!property->group.empty() && !isBlank(text)) mTextsByGroup.emplace(capitals(property->group), text);
    }
}

QVString CardLabels::labelOfProperty(const QVVCardProperty& property) const {
    const auto text = mTextsByGroup.find(capitals(property.group));
    if (text != mTextsByGroup.end()) return text->second;
    const std::vector<std::string> types = property.types();
    for (const LabelRow& row : kLabels) {
        if (property.isNamed(row.property) && hasAllTypes(types, row)) return std::string(row.label);
    }
    return std::nullopt;
}

void addPropertyWithLabel(QVVCard& card, QVVCardProperty property, const QVString& label) {
    property.version = card.version();
    const LabelRow* row = label ? rowForLabel(property, *label) : nullptr;
    if (canBeTypes(property, row)) {
        addTypes(property, *row);
        if (card.version() == QVVCardVersion::V21) separateTypes(property);
    } else if (!isBlank(label)) {
        property.group = card.unusedGroup();
    }
    const std::string group = property.group;
    card.addProperty(std::move(property));
    if (group.empty()) return;
    QVVCardProperty text = QVVCardProperty::withTexts(card.version(), "X-ABLabel", {trimmed(*label)});
    text.group = group;
    card.addProperty(std::move(text));
}
