#include "QVSocialSearch/QVVCard.h"

#include "QVPlatform/Text.h"
#include "VCard/VCardEncoding.h"
#include "VCard/VCardLine.h"
#include "VCard/VCardReader.h"

#include <algorithm>

namespace {

/// The number of a group "itemN"; 0 for any other, or one that nobody would count to.
std::int64_t numberOfGroup(const std::string& group) {
    const bool isItem = capitals(group).starts_with("ITEM") && group.size() <= 12;
    return isItem ? std::max<std::int64_t>(0, qv::Text::integerValue(group.substr(4))) : 0;
}

}  // namespace

QVVCard::QVVCard() = default;
QVVCard::QVVCard(QVVCard&&) noexcept = default;
QVVCard& QVVCard::operator=(QVVCard&&) noexcept = default;
QVVCard::~QVVCard() = default;

std::optional<QVVCard> QVVCard::cardWithBytes(std::string_view bytes, std::string* problem) {
    VCardReader reader(bytes);
    if (!reader.read()) {
        if (problem != nullptr) *problem = reader.problem();
        return std::nullopt;
    }
    QVVCard card;
    card.mVersion = reader.version();
    card.mLineEnd = reader.lineEnd();
    card.mLines = reader.takeLines();
    return card;
}

QVVCard QVVCard::emptyCard() {
    return *cardWithBytes("BEGIN:VCARD\r\nVERSION:3.0\r\nEND:VCARD\r\n", nullptr);
}

std::string QVVCard::bytes() const {
    std::string bytes;
    for (const VCardLine& line : mLines)
        bytes += line.bytes;
    return bytes;
}

std::vector<const QVVCardProperty*> QVVCard::properties() const {
    std::vector<const QVVCardProperty*> properties;
    for (const VCardLine& line : mLines) {
        if (line.property && line.property->isReadable) properties.push_back(&*line.property);
    }
    return properties;
}

std::vector<const QVVCardProperty*> QVVCard::propertiesNamed(std::string_view capitalName) const {
    std::vector<const QVVCardProperty*> found = properties();
    std::erase_if(found, [&](const QVVCardProperty* property) { return !property->isNamed(capitalName); });
    return found;
}

const QVVCardProperty* QVVCard::propertyNamed(std::string_view capitalName) const {
    const std::vector<const QVVCardProperty*> found = propertiesNamed(capitalName);
    return found.empty() ? nullptr : found.front();
}

const QVVCardProperty* QVVCard::propertyNamed(std::string_view capitalName, const std::string& group) const {
    const std::string capitalGroup = capitals(group);
    for (const QVVCardProperty* property : propertiesNamed(capitalName)) {
        if (!group.empty() && capitals(property->group) == capitalGroup) return property;
    }
    return nullptr;
}

void QVVCard::replaceProperty(const QVVCardProperty* property, QVVCardProperty with) {
    for (VCardLine& line : mLines) {
        if (!line.property || &*line.property != property) continue;
        with.version = mVersion;
        line = lineWithProperty(with, mLineEnd);
        return;
    }
}

void QVVCard::addProperty(QVVCardProperty property) {
    property.version = mVersion;
    // The last line that is not empty is the card's end.
    const auto isEnd = [](const VCardLine& line) { return line.bytes.find(':') != std::string::npos; };
    const auto end = std::find_if(mLines.rbegin(), mLines.rend(), isEnd);
    mLines.insert(end == mLines.rend() ? mLines.end() : std::prev(end.base()), lineWithProperty(property, mLineEnd));
}

std::string QVVCard::unusedGroup() const {
    std::int64_t last = 0;
    for (const VCardLine& line : mLines) {
        if (line.property) last = std::max(last, numberOfGroup(line.property->group));
    }
    return "item" + std::to_string(last + 1);
}
