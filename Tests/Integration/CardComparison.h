#pragma once

#include "QVSocialSearch/QVVCard.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <string>
#include <vector>

/// What a card says, however it is written: servers sort lines, fold them elsewhere, and write names and parameters in
/// other cases.
namespace integration {

inline std::string capitalLetters(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::toupper(c); });
    return text;
}

inline std::string joined(std::vector<std::string> texts) {
    std::sort(texts.begin(), texts.end());
    std::string all;
    for (const std::string& text : texts)
        all += "[" + text + "]";
    return all;
}

/// The parameters but those that only say how the value is written.
inline std::string parametersOf(const QVVCardProperty& property) {
    std::vector<std::string> texts;
    for (const QVVCardParameter& parameter : property.parameters) {
        const std::string name = capitalLetters(parameter.name);
        for (const std::string& value : parameter.values) {
            if (name != "ENCODING" && name != "CHARSET") texts.push_back(name + "=" + capitalLetters(value));
        }
    }
    return joined(texts);
}

inline std::string valueOf(const QVVCardProperty& property) {
    if (const auto bytes = property.bytes()) return "bytes " + std::string(bytes->begin(), bytes->end());
    return joined({}) + "text " + property.text();
}

/// Each property with its parameters and its value, and the label of its group instead of the group's name; sorted.
inline std::vector<std::string> statementsOf(const std::string& bytes) {
    std::string problem;
    const auto card = QVVCard::cardWithBytes(bytes, &problem);
    EXPECT_TRUE(card) << problem << ": " << bytes;
    std::vector<std::string> statements;
    for (const QVVCardProperty* property : card ? card->properties() : std::vector<const QVVCardProperty*>()) {
        const std::string name = capitalLetters(property->name);
        if (name == "X-ABLABEL" || name == "PRODID" || name == "REV") continue;
        const QVVCardProperty* label = card->propertyNamed("X-ABLABEL", property->group);
        statements.push_back(name + parametersOf(*property) + (label != nullptr ? "(" + label->text() + ")" : "") +
                             ":" + valueOf(*property));
    }
    std::sort(statements.begin(), statements.end());
    return statements;
}

}  // namespace integration
