#include "Codes/VCard.h"

#include "Codes/VCardLines.h"
#include "Fields/Words/Words.h"
#include "Text/Letters.h"

#include <algorithm>
#include <initializer_list>
#include <string>

namespace qv::recognition {
namespace {

constexpr std::string_view kStart = "begin:vcard";

using Parts = std::vector<std::string>;

std::string part(const Parts& parts, std::size_t i) {
    return i < parts.size() ? simplified(parts[i]) : std::string();
}

std::string joined(std::initializer_list<std::string> texts, std::string_view between) {
    std::string result;
    for (const auto& text : texts) {
        if (text.empty()) continue;
        if (!result.empty()) result += between;
        result += text;
    }
    return result;
}

bool isEastAsianText(const std::string& text) {
    const auto points = codePoints(text);
    return std::any_of(points.begin(), points.end(), isEastAsian);
}

/// N: family, given, additional names, honorifics before, after.
std::string nameOf(const Parts& parts) {
    if (isEastAsianText(part(parts, 0))) return joined({part(parts, 0), part(parts, 1)}, " ");
    const std::string name = joined({part(parts, 3), part(parts, 1), part(parts, 2), part(parts, 0)}, " ");
    return joined({name, part(parts, 4)}, ", ");
}

/// Where codes with letters and states' names stand, the post code follows the place: "Glendale, CA 91204".
std::string placeOf(const std::string& place, const std::string& region, const std::string& postcode) {
    if (isEastAsianText(place)) return joined({postcode, region + place}, " ");
    const bool letterFirst = !postcode.empty() && isLetter(codePoints(postcode).front());
    if (region.empty()) return letterFirst ? joined({place, postcode}, " ") : joined({postcode, place}, " ");
    if (words::isState(folded(region))) return joined({place, joined({region, postcode}, " ")}, ", ");
    return letterFirst ? joined({place, region, postcode}, ", ")
                       : joined({joined({postcode, place}, " "), region}, ", ");
}

/// ADR: post box, extension, street, place, region, post code, country. Some writers put a line break into the street.
std::string addressOf(const Parts& parts) {
    std::string street = part(parts, 2);
    return joined({part(parts, 0), part(parts, 1), street, placeOf(part(parts, 3), part(parts, 4), part(parts, 5)),
                   part(parts, 6)},
                  ", ");
}

std::string withoutScheme(const std::string& text, std::string_view scheme) {
    return startsWith(folded(text), scheme) ? text.substr(scheme.size()) : text;
}

CodeField numberOf(const VCardProperty& property) {
    std::string number = withoutScheme(vCardText(property.value), "tel:");
    number.erase(std::min(number.find(";ext="), number.size()));
    if (property.has("fax")) return {FieldType::Fax, number};
    if (property.has("cell") || property.has("mobile") || property.has("iphone")) return {FieldType::Mobile, number};
    const bool said = property.has("work") || property.has("home") || property.has("main");
    return {FieldType::Phone, number, !said};
}

void addFirm(const Parts& parts, std::vector<CodeField>& fields) {
    fields.push_back({FieldType::Company, part(parts, 0)});
    for (std::size_t i = 1; i < parts.size(); ++i)
        fields.push_back({FieldType::Department, part(parts, i)});
}

/// "skype:jane.doe?chat", "https://twitter.com/jane"
void addProfile(const VCardProperty& property, std::vector<CodeField>& fields) {
    const std::string text = vCardText(property.value);
    const bool isSkype = property.name == "x-skype" || property.name == "x-skype-username" ||
                         startsWith(folded(text), "skype:") || property.has("skype");
    const bool isTwitter = property.name == "x-twitter" || property.has("twitter");
    const std::string handle = withoutScheme(text.substr(0, text.find('?')), "skype:");
    if (isSkype) fields.push_back({FieldType::Skype, handle});
    if (isTwitter) fields.push_back({FieldType::Twitter, handle});
}

bool isNamed(const VCardProperty& property, std::initializer_list<std::string_view> names) {
    return std::find(names.begin(), names.end(), property.name) != names.end();
}

void add(const VCardProperty& property, std::vector<CodeField>& fields) {
    if (property.name == "org") addFirm(vCardParts(property.value), fields);
    if (property.name == "title") fields.push_back({FieldType::Title, vCardText(property.value)});
    if (property.name == "tel" && !property.has("pager")) fields.push_back(numberOf(property));
    if (property.name == "email")
        fields.push_back({FieldType::Email, withoutScheme(vCardText(property.value), "mailto:")});
    if (property.name == "url") fields.push_back({FieldType::URL, vCardText(property.value)});
    if (property.name == "adr") fields.push_back({FieldType::Address, addressOf(vCardParts(property.value))});
    if (isNamed(property, {"impp", "x-skype", "x-skype-username", "x-twitter", "x-socialprofile"}))
        addProfile(property, fields);
}

const VCardProperty* find(const std::vector<VCardProperty>& properties, std::string_view name) {
    const auto found = std::find_if(properties.begin(), properties.end(), [name](const auto& property) {
        return property.name == name && !simplified(vCardText(property.value)).empty();
    });
    return found == properties.end() ? nullptr : &*found;
}

}  // namespace

bool isVCard(std::string_view code) {
    const auto start = code.find_first_not_of(" \r\n\t");
    return start != std::string_view::npos && startsWith(folded(code.substr(start, kStart.size())), kStart);
}

std::vector<CodeField> readVCard(std::string_view code) {
    const auto properties = vCardProperties(code);
    std::vector<CodeField> fields;
    const auto* whole = find(properties, "fn");
    const auto* parted = find(properties, "n");
    if (whole != nullptr) {
        fields.push_back({FieldType::Name, vCardText(whole->value)});
    } else if (parted != nullptr) {
        fields.push_back({FieldType::Name, nameOf(vCardParts(parted->value))});
    }
    for (const auto& property : properties)
        add(property, fields);
    const auto* role = find(properties, "role");
    if (role != nullptr && find(properties, "title") == nullptr)
        fields.push_back({FieldType::Title, vCardText(role->value)});
    return fields;
}

}  // namespace qv::recognition
