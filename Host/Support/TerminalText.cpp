#include "Support/TerminalText.h"

#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <cstdio>

namespace qvhost::TerminalText {
namespace {

icu::UnicodeString decoded(std::string_view text) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
}

void append(std::string& text, UChar32 character) {
    icu::UnicodeString(character).toUTF8String(text);
}

/// Controls act on the terminal; embeddings, overrides and isolates reorder what stands around them; the two
/// separators break lines on some terminals.
bool needsEscape(UChar32 character) {
    return u_charType(character) == U_CONTROL_CHAR || (character >= 0x202A && character <= 0x202E) ||
           (character >= 0x2066 && character <= 0x2069) || character == 0x2028 || character == 0x2029 ||
           (character >= 0xE0000 && character <= 0xE007F) || U_IS_UNICODE_NONCHAR(character);
}

void appendEscape(std::string& text, UChar32 character) {
    char escape[16];
    if (character == '\n') {
        text += "\\n";
    } else if (character == '\r') {
        text += "\\r";
    } else if (character == '\t') {
        text += "\\t";
    } else {
        (void)std::snprintf(escape, sizeof escape, character < 0x100 ? "\\x%02x" : "\\u%04x",
                            static_cast<unsigned>(character));
        text += escape;
    }
}

std::string printableExcept(std::string_view text, UChar32 kept) {
    std::string result;
    const icu::UnicodeString characters = decoded(text);
    for (int32_t i = 0; i < characters.length(); i = characters.moveIndex32(i, 1)) {
        const UChar32 character = characters.char32At(i);
        if (needsEscape(character) && character != kept) {
            appendEscape(result, character);
        } else {
            append(result, character);
        }
    }
    return result;
}

std::size_t columnsOf(UChar32 character) {
    switch (u_charType(character)) {
        case U_NON_SPACING_MARK:
        case U_ENCLOSING_MARK:
        case U_FORMAT_CHAR:
        case U_CONTROL_CHAR:
            return character == 0xAD ? 1 : 0;
        default:
            break;
    }
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_FULLWIDTH || width == U_EA_WIDE ? 2 : 1;
}

std::string_view withoutTrailingSpace(std::string_view text) {
    const std::size_t end = text.find_last_not_of(" \t\r\n");
    return text.substr(0, end == std::string_view::npos ? 0 : end + 1);
}

/// The beginning of `line` that fits: up to the last space within the width, or as many characters as there is room
/// for (one at least).
std::size_t lengthThatFits(std::string_view line, std::size_t width) {
    const icu::UnicodeString characters = decoded(line);
    std::size_t columns = 0;
    std::string head;
    for (int32_t i = 0; i < characters.length(); i = characters.moveIndex32(i, 1)) {
        const UChar32 character = characters.char32At(i);
        columns += columnsOf(character);
        if (columns > width && !head.empty()) {
            const std::size_t space = character == ' ' ? head.size() : head.rfind(' ');
            return space == std::string::npos || space == 0 ? head.size() : space;
        }
        append(head, character);
    }
    return line.size();
}

/// At most `limit` bytes of valid UTF-8, cut between characters.
std::string_view beginning(std::string_view text, std::size_t limit) {
    if (text.size() <= limit) return text;
    while (limit > 0 && (static_cast<unsigned char>(text[limit]) & 0xC0) == 0x80)
        --limit;
    return text.substr(0, limit);
}

void appendWrapped(std::vector<std::string>& lines, std::string_view line, std::size_t width) {
    // Looking only at so much at a time keeps a line of many megabytes linear.
    const std::size_t window = width * 16;
    do {
        const std::size_t length = lengthThatFits(beginning(line, window), width);
        lines.emplace_back(line.substr(0, length));
        line.remove_prefix(length);
        if (!line.empty() && line.front() == ' ') line.remove_prefix(1);
    } while (!line.empty());
}

}  // namespace

std::string printable(std::string_view text) {
    return printableExcept(text, U_SENTINEL);
}

std::string printableLines(std::string_view text) {
    return printableExcept(text, '\n');
}

std::size_t displayWidth(std::string_view text) {
    const icu::UnicodeString characters = decoded(text);
    std::size_t columns = 0;
    for (int32_t i = 0; i < characters.length(); i = characters.moveIndex32(i, 1))
        columns += columnsOf(characters.char32At(i));
    return columns;
}

std::vector<std::string> wrapped(std::string_view text, std::size_t width) {
    std::vector<std::string> lines;
    std::string rest = printableLines(withoutTrailingSpace(text));
    for (std::size_t start = 0; start <= rest.size();) {
        const std::size_t end = std::min(rest.find('\n', start), rest.size());
        appendWrapped(lines, std::string_view(rest).substr(start, end - start), width);
        start = end + 1;
    }
    return lines;
}

}  // namespace qvhost::TerminalText
