#include "VCard/CardAddress.h"

#include "Merging/EntryMeaning.h"
#include "QVPlatform/Text.h"
#include "VCard/CardLabels.h"

#include <set>
#include <vector>

namespace {

enum Component { Box, Extension, Street, Locality, Region, Code, Country };

std::string joined(const std::string& first, std::string_view separator, const std::string& second) {
    return first + (first.empty() || second.empty() ? "" : std::string(separator)) + second;
}

std::string townLine(const std::vector<std::string>& parts) {
    if (parts[Region].empty()) return joined(parts[Code], " ", parts[Locality]);
    return joined(joined(parts[Locality], ", ", parts[Region]), " ", parts[Code]);
}

std::string textOfAddress(const QVVCardProperty& property) {
    if (const auto label = property.parameter("LABEL"); !isBlank(label)) return trimmed(*label);
    std::vector<std::string> parts = property.components();
    parts.resize(Country + 1);
    for (std::string& part : parts)
        part = trimmed(part);
    std::string text;
    for (const std::string& line : {parts[Box], parts[Extension], parts[Street], townLine(parts), parts[Country]})
        text = joined(text, "\n", line);
    return text;
}

std::u16string meaningOfAddress(const std::string& text) {
    std::u16string meaning = qv::Text::utf16(qv::Text::lowercased(text));
    std::erase_if(meaning, [](char16_t unit) {
        return qv::Text::isWhitespace(unit) || qv::Text::isNewline(unit) || unit == u',';
    });
    return meaning;
}

}  // namespace

QVPostalAddressList addressesOfCard(const QVVCard& card) {
    QVPostalAddressList addresses;
    const CardLabels labels(card);
    for (const QVVCardProperty* property : card.propertiesNamed("ADR")) {
        auto address = QVPostalAddress::addressWithLabel(labels.labelOfProperty(*property), textOfAddress(*property));
        if (address) addresses.push_back(std::move(address));
    }
    return addresses;
}

void writeAddresses(QVVCard& card, const QVPostalAddressList& addresses) {
    std::set<std::u16string> known;
    for (const auto& address : addressesOfCard(card))
        known.insert(meaningOfAddress(address->formattedAddress()));
    for (const auto& address : addresses) {
        if (!known.insert(meaningOfAddress(address->formattedAddress())).second) continue;
        const std::vector<std::string> parts{"", "", trimmed(address->formattedAddress()), "", "", "", ""};
        addPropertyWithLabel(card, QVVCardProperty::withTexts(card.version(), "ADR", parts), address->label());
    }
}
