#include "NoteEncoding.h"

#include "QVCardScan/QVCardScanDefines.h"
#include "QVPlatform/Format.h"
#include "QVPlatform/Text.h"

#include <array>
#include <cstddef>

namespace qvnote {
namespace {

constexpr std::string_view kMarkupCharacters = "&<>\"'";
constexpr std::string_view kEntities[] = {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;"};

/// The entity of each character; empty where it stays.
constexpr auto kEntityOf = []() {
    std::array<std::string_view, 256> table{};
    for (std::size_t index = 0; index < kMarkupCharacters.size(); ++index)
        table[static_cast<unsigned char>(kMarkupCharacters[index])] = kEntities[index];
    return table;
}();

constexpr std::string_view kUnreserved = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
constexpr std::string_view kLabelCellFormat =
    "%@<span style=\"x-quorvane:context;-quorvane-context-name:%@\">%@</span>%@";

/// The words of a text, joined by single spaces.
std::string joinedWords(std::string_view text) {
    std::u16string joined;
    bool gap = false;
    for (const char16_t unit : qv::Text::utf16(text)) {
        if (qv::Text::isWhitespace(unit) || qv::Text::isNewline(unit)) {
            gap = !joined.empty();
            continue;
        }
        if (gap) joined += u' ';
        gap = false;
        joined += unit;
    }
    return qv::Text::utf8(joined);
}

}  // namespace

// Replacing one character after the other, the ampersand first, gives the same text: no entity holds a later character.
std::string escapedMarkup(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    std::size_t copied = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const std::string_view entity = kEntityOf[static_cast<unsigned char>(text[index])];
        if (entity.empty()) continue;
        escaped.append(text, copied, index - copied).append(entity);
        copied = index + 1;
    }
    return escaped.append(text, copied);
}

std::string escapedURLArgument(std::string_view text) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string escaped;
    escaped.reserve(text.size());
    for (const char character : text) {
        if (kUnreserved.find(character) != std::string_view::npos) {
            escaped += character;
            continue;
        }
        const auto byte = static_cast<unsigned char>(character);
        escaped += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return escaped;
}

std::string mapLink(std::string_view address) {
    return escapedMarkup(qv::format("%@%@", QV_MAP_SEARCH_URL, escapedURLArgument(joinedWords(address))));
}

std::string labelCell(const QVString& name) {
    const std::string text = name.value_or("");
    return qv::format(kLabelCellFormat, QVContactFieldLabelHeader, qv::Text::lowercased(text), text,
                      QVContactFieldLabelFooter);
}

}  // namespace qvnote
