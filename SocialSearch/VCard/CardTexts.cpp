#include "VCard/CardTexts.h"

#include "Merging/EntryMeaning.h"
#include "QVSocialSearch/QVPersonName.h"

#include <vector>

namespace {

/// Absent when nothing is there but blanks.
QVString presentText(const std::string& text) {
    return isBlank(text) ? QVString() : QVString(trimmed(text));
}

/// What stands for the name of somebody without one.
std::string displayNameFor(const QVVCard& card, const QVSocialProfile& profile) {
    for (const QVString& name : {nameOf(card), profile.company(), companyOf(card)}) {
        if (!isBlank(name)) return trimmed(*name);
    }
    if (!profile.emailAddresses().empty()) return trimmed(profile.emailAddresses().front()->address());
    if (!profile.phoneNumbers().empty()) return trimmed(profile.phoneNumbers().front()->number());
    const QVHandleSet handles = profile.twitterAccounts();
    return handles->begin() == handles->end() ? "Unnamed" : trimmed(*handles->begin());
}

QVVCardProperty nameProperty(const QVVCard& card, const std::string& displayName) {
    const QVPersonName name = QVPersonName::nameWithText(displayName);
    return QVVCardProperty::withTexts(card.version(), "N",
                                      {name.family, name.given, name.additional, name.prefix, name.suffix});
}

}  // namespace

QVString textNamed(const QVVCard& card, std::string_view name) {
    for (const QVVCardProperty* property : card.propertiesNamed(name)) {
        if (QVString text = presentText(property->text())) return text;
    }
    return std::nullopt;
}

QVString companyOf(const QVVCard& card) {
    const QVVCardProperty* property = card.propertyNamed("ORG");
    return property != nullptr ? presentText(property->components().front()) : std::nullopt;
}

QVString nameOf(const QVVCard& card) {
    if (QVString name = textNamed(card, "FN")) return name;
    const QVVCardProperty* property = card.propertyNamed("N");
    if (property == nullptr) return std::nullopt;
    std::vector<std::string> parts = property->components();
    parts.resize(5);
    std::string name;
    for (const std::size_t part : {3U, 1U, 2U, 0U, 4U}) {
        if (!isBlank(parts[part])) name += (name.empty() ? "" : " ") + trimmed(parts[part]);
    }
    return presentText(name);
}

void writeText(QVVCard& card, const std::string& name, const QVString& text) {
    if (isBlank(text)) return;
    const bool hasText = textNamed(card, name).has_value();
    QVVCardProperty written = QVVCardProperty::withTexts(card.version(), name, {trimmed(*text)});
    for (const QVVCardProperty* property : card.propertiesNamed(name)) {
        if (hasText && isBlank(property->text())) continue;
        if (trimmed(property->text()) == trimmed(*text)) return;
        return card.replaceProperty(property, property->withPlainValue(written.value));
    }
    card.addProperty(std::move(written));
}

void writeCompany(QVVCard& card, const QVString& company) {
    if (isBlank(company) || companyOf(card) == trimmed(*company)) return;
    const QVVCardProperty* property = card.propertyNamed("ORG");
    if (property == nullptr)
        return card.addProperty(QVVCardProperty::withTexts(card.version(), "ORG", {trimmed(*company)}));
    card.replaceProperty(property, property->withPlainValue(property->valueWithFirstComponent(trimmed(*company))));
}

void writeName(QVVCard& card, const QVSocialProfile& profile) {
    const bool isOther = !isBlank(profile.formattedName()) && nameOf(card) != trimmed(*profile.formattedName());
    const std::string displayName = nameOf(card).value_or("");
    if (isOther) writeText(card, "FN", profile.formattedName());
    if (!textNamed(card, "FN")) writeText(card, "FN", displayNameFor(card, profile));
    const QVVCardProperty* old = card.propertyNamed("N");
    if (old == nullptr) return card.addProperty(nameProperty(card, isOther ? *profile.formattedName() : displayName));
    if (!isOther) return;
    card.replaceProperty(old, old->withPlainValue(nameProperty(card, *profile.formattedName()).value));
}
