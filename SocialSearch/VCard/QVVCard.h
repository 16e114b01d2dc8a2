#pragma once

#include "QVPlatform/Export.h"
#include "QVSocialSearch/QVVCardProperty.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct VCardLine;

/// One vCard, kept line by line: what nobody changes is written back byte for byte, with the file's own line ends and
/// version. A value that can be moved. Not synchronised.
class QV_EXPORT QVVCard {
  public:
    /// A file that is larger is no card.
    static constexpr std::size_t kMaximumSize = std::size_t{16} << 20;

    /// `cardWithBytes:problem:` Reads 2.1, 3.0 and 4.0. Nothing when the bytes are not exactly one well-formed card;
    /// `problem` (null: nobody asks) then tells why, without anything of its contents.
    static std::optional<QVVCard> cardWithBytes(std::string_view bytes, std::string* problem);
    /// A card of version 3.0 with CR LF and nothing in it.
    static QVVCard emptyCard();

    /// Takes the other card's contents.
    QVVCard(QVVCard&&) noexcept;
    /// Takes the other card's contents.
    QVVCard& operator=(QVVCard&&) noexcept;
    ~QVVCard();

    /// The version that the card says it has.
    QVVCardVersion version() const { return mVersion; }
    /// The card as it is written to a file.
    std::string bytes() const;

    /// Those that can be read, in the card's order; VERSION among them. Valid until the card changes.
    std::vector<const QVVCardProperty*> properties() const;
    /// Those of a name (in capitals); the first of them, null when there is none.
    std::vector<const QVVCardProperty*> propertiesNamed(std::string_view capitals) const;
    /// The first property of that name (in capitals); null when there is none.
    const QVVCardProperty* propertyNamed(std::string_view capitals) const;
    /// The property of that name in a group; null when there is none, or no group.
    const QVVCardProperty* propertyNamed(std::string_view capitals, const std::string& group) const;

    /// Writes the line of `property` (one of this card's) anew.
    void replaceProperty(const QVVCardProperty* property, QVVCardProperty with);
    /// Adds a line before the card's end.
    void addProperty(QVVCardProperty property);
    /// "item" with a number that no group of the card has.
    std::string unusedGroup() const;

  private:
    QVVCard();
    QVVCardVersion mVersion = QVVCardVersion::V30;
    std::string mLineEnd;
    std::vector<VCardLine> mLines;
};
