#include "QVSocialSearch/QVVCardProperty.h"

#include "QVPlatform/Base64.h"
#include "VCard/CharacterSet.h"
#include "VCard/VCardEncoding.h"
#include "VCard/VCardParameters.h"
#include "VCard/VCardText.h"

#include <algorithm>
#include <iterator>

namespace {

bool isNameCharacter(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' || c == '_';
}

bool isName(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), isNameCharacter);
}

/// Groups may be anything that a name may be, and some writers put dots into them.
bool isGroup(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return isNameCharacter(c) || c == '.'; });
}

/// "ENCODING=b", "ENCODING=BASE64", and 2.1's word that stands alone.
bool saysBase64(const QVVCardParameter& parameter) {
    const std::string name = capitals(parameter.name);
    return std::any_of(parameter.values.begin(), parameter.values.end(), [&](const std::string& value) {
        const std::string word = capitals(value);
        if (name == "ENCODING") return word == "B" || word == "BASE64";
        return (name.empty() || name == "TYPE") && word == "BASE64";
    });
}

}  // namespace

QVVCardProperty QVVCardProperty::withTexts(QVVCardVersion version, std::string name,
                                           const std::vector<std::string>& texts) {
    std::string value;
    for (const std::string& text : texts) {
        if (&text != &texts.front()) value += ';';
        value += escapedText(version, text);
    }
    return withValue(version, std::move(name), std::move(value));
}

QVVCardProperty QVVCardProperty::withValue(QVVCardVersion version, std::string name, std::string value) {
    QVVCardProperty property;
    property.version = version;
    property.name = std::move(name);
    property.value = std::move(value);
    return property;
}

std::optional<QVVCardProperty> QVVCardProperty::propertyWithLine(QVVCardVersion version, std::string_view line) {
    const std::size_t nameEnd = line.find_first_of(";:");
    if (nameEnd == std::string_view::npos) return std::nullopt;
    const std::string_view fullName = line.substr(0, nameEnd);
    const std::size_t dot = fullName.rfind('.');
    const std::size_t nameStart = dot == std::string_view::npos ? 0 : dot + 1;
    const std::optional<ParameterList> list = parametersInLine(version, line.substr(nameEnd));
    if (!list || !isName(fullName.substr(nameStart)) || dot == 0) return std::nullopt;

    QVVCardProperty property =
        withValue(version, std::string(fullName.substr(nameStart)), std::string(line.substr(nameEnd + list->length)));
    property.group = fullName.substr(0, nameStart == 0 ? 0 : dot);
    if (!isGroup(property.group)) return std::nullopt;
    property.parameters = list->parameters;
    return property;
}

void QVVCardProperty::decode() {
    if (parameters.empty() && isASCII(value)) return;
    const std::string characterSet = parameter("CHARSET").value_or("");
    const std::string bytes = isQuotedPrintable() ? textOfQuotedPrintable(value) : value;
    std::optional<std::string> text =
        textInCharacterSet(bytes, version == QVVCardVersion::V21 || isQuotedPrintable() ? characterSet : "UTF-8");
    isReadable = text.has_value();
    if (!text) return;
    // An encoded NUL could not be written back into a text.
    std::erase(*text, '\0');
    value = *std::move(text);
}

bool QVVCardProperty::isNamed(std::string_view capitalName) const {
    return name.size() == capitalName.size() && capitals(name) == capitalName;
}

std::optional<std::string> QVVCardProperty::parameter(std::string_view capitalName) const {
    for (const QVVCardParameter& parameter : parameters) {
        if (!parameter.values.empty() && capitals(parameter.name) == capitalName) return parameter.values.front();
    }
    return std::nullopt;
}

std::vector<std::string> QVVCardProperty::types() const {
    std::vector<std::string> words;
    for (const QVVCardParameter& parameter : parameters) {
        if (!parameter.name.empty() && capitals(parameter.name) != "TYPE") continue;
        for (const std::string& value_ : parameter.values) {
            // 4.0 has lists inside of quotes.
            std::vector<std::string> parts = splitAt(capitals(value_), ',');
            std::move(parts.begin(), parts.end(), std::back_inserter(words));
        }
    }
    return words;
}

bool QVVCardProperty::hasType(std::string_view capitalName) const {
    const std::vector<std::string> words = types();
    return std::find(words.begin(), words.end(), capitalName) != words.end();
}

bool QVVCardProperty::isQuotedPrintable() const {
    return capitals(parameter("ENCODING").value_or("")) == "QUOTED-PRINTABLE" || hasType("QUOTED-PRINTABLE");
}

bool QVVCardProperty::isBase64() const {
    return std::any_of(parameters.begin(), parameters.end(), saysBase64);
}

std::string QVVCardProperty::text() const {
    return unescapedText(version, value);
}

std::vector<std::string> QVVCardProperty::components() const {
    std::vector<std::string> texts;
    for (const std::string& part : splitAtUnescaped(value, ';'))
        texts.push_back(unescapedText(version, part));
    return texts;
}

std::string QVVCardProperty::valueWithFirstComponent(std::string_view text) const {
    const std::size_t first = splitAtUnescaped(value, ';').front().size();
    return escapedText(version, text) + value.substr(first);
}

QVVCardProperty QVVCardProperty::withPlainValue(std::string plainValue) const {
    QVVCardProperty plain = *this;
    plain.value = std::move(plainValue);
    std::erase_if(plain.parameters, saysBase64);
    return plain;
}

std::optional<qv::Data> QVVCardProperty::bytes() const {
    return isBase64() ? qv::dataFromBase64(value) : std::nullopt;
}
