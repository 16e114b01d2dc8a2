#pragma once

#include "QVPlatform/Data.h"
#include "QVPlatform/Export.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Versions of the format: 2.1, 3.0 and 4.0.
enum class QVVCardVersion { V21, V30, V40 };

/// A parameter with its values, without quotes and caret escapes. A word that stands alone, as 2.1 has it
/// ("TEL;HOME:"), is a parameter without a name.
struct QVVCardParameter {
    /// In capitals; empty for a word that stands alone.
    std::string name;
    /// In their order.
    std::vector<std::string> values;
};

/// One property of a vCard: `group.NAME;parameters:value` (RFC 2426, RFC 6350, and versit's vCard 2.1). A plain value.
struct QV_EXPORT QVVCardProperty {
    /// The version of the card that it belongs to.
    QVVCardVersion version = QVVCardVersion::V30;
    /// What comes before the dot; empty without one.
    std::string group;
    /// As it is written; see `isNamed`.
    std::string name;
    /// In their order.
    std::vector<QVVCardParameter> parameters;
    /// Unfolded, in UTF-8, out of quoted-printable; what the version escapes is still escaped.
    std::string value;
    /// False when the value is in a character set that nobody here knows; `value` is then as it was written.
    bool isReadable = true;

    /// A property whose value is the texts, escaped as the version wants it, with semicolons between them. Line ends in
    /// them are LF.
    static QVVCardProperty withTexts(QVVCardVersion version, std::string name, const std::vector<std::string>& texts);
    /// A property whose value goes into the card as it is (URIs, base64). It must have no line end.
    static QVVCardProperty withValue(QVVCardVersion version, std::string name, std::string value);
    /// `propertyWithLine:` An unfolded line, without its line end. Nothing when it is not well formed. The value is
    /// not decoded yet: see `decode`.
    static std::optional<QVVCardProperty> propertyWithLine(QVVCardVersion version, std::string_view line);

    /// Takes the value out of quoted-printable and out of its character set.
    void decode();

    /// Whether it has that name (in capitals); case does not count.
    bool isNamed(std::string_view capitals) const;
    /// The first value of a parameter (its name in capitals); nothing when it is not there.
    std::optional<std::string> parameter(std::string_view capitals) const;
    /// The words of TYPE and the words that stand alone, in capitals.
    std::vector<std::string> types() const;
    /// Whether one of `types` is that word (in capitals).
    bool hasType(std::string_view capitals) const;
    /// Whether the value is encoded as quoted-printable.
    bool isQuotedPrintable() const;
    /// Whether the value is encoded as base64.
    bool isBase64() const;

    /// The whole value as a text, and the texts between its semicolons.
    std::string text() const;
    /// The texts between the value's semicolons.
    std::vector<std::string> components() const;
    /// The escaped value with the first component replaced and the others as they are.
    std::string valueWithFirstComponent(std::string_view text) const;
    /// The same property with another value that is no base64, whatever the old one was: what says so goes.
    QVVCardProperty withPlainValue(std::string plainValue) const;

    /// The bytes of a base64 value; nothing when it is none.
    std::optional<qv::Data> bytes() const;
};
