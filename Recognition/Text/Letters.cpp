#include "Text/Letters.h"

#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/unorm2.h>
#include <unicode/uscript.h>

#include <algorithm>
#include <numeric>

namespace qv::recognition {
namespace {

/// Letters that no decomposition takes apart.
const char* plainSpelling(char32_t c) {
    switch (c) {
        case U'ß':
            return "ss";
        case U'æ':
            return "ae";
        case U'œ':
            return "oe";
        case U'ø':
            return "o";
        case U'ł':
            return "l";
        case U'đ':
        case U'ð':
            return "d";
        case U'ı':
            return "i";
        case U'þ':
            return "th";
        case U'’':
        case U'‘':
        case U'´':
            return "'";
        case U'–':
        case U'—':
            return "-";
        default:
            return nullptr;
    }
}

std::u32string decomposed(std::u32string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* normalizer = unorm2_getNFDInstance(&status);
    std::u32string result;
    for (const char32_t c : text) {
        UChar parts[8];
        status = U_ZERO_ERROR;
        const auto whole = static_cast<UChar32>(c);
        const int count = U_IS_SURROGATE(whole) ? -1 : unorm2_getDecomposition(normalizer, whole, parts, 8, &status);
        if (count < 0 || U_FAILURE(status) != 0) {
            result.push_back(c);
            continue;
        }
        const icu::UnicodeString unit(parts, count);
        for (int i = 0; i < unit.length(); i = unit.moveIndex32(i, 1))
            result.push_back(static_cast<char32_t>(unit.char32At(i)));
    }
    return result;
}

bool isSpace(char32_t c) {
    return u_isUWhiteSpace(static_cast<UChar32>(c)) != 0;
}

bool isWordByte(char c) {
    return c < 0 || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

}  // namespace

std::u32string codePoints(std::string_view text) {
    const auto units = icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
    std::u32string result;
    for (int i = 0; i < units.length(); i = units.moveIndex32(i, 1))
        result.push_back(static_cast<char32_t>(units.char32At(i)));
    return result;
}

std::string toUTF8(std::u32string_view codePoints) {
    icu::UnicodeString units;
    for (const char32_t c : codePoints)
        units.append(static_cast<UChar32>(c));
    std::string text;
    return units.toUTF8String(text);
}

bool isLetter(char32_t c) {
    return u_isalpha(static_cast<UChar32>(c)) != 0;
}

bool isCapital(char32_t c) {
    return u_isupper(static_cast<UChar32>(c)) != 0;
}

bool isDigit(char32_t c) {
    return c >= U'0' && c <= U'9';
}

bool isEastAsian(char32_t c) {
    UErrorCode status = U_ZERO_ERROR;
    const UScriptCode script = uscript_getScript(static_cast<UChar32>(c), &status);
    return script == USCRIPT_HAN || script == USCRIPT_HIRAGANA || script == USCRIPT_KATAKANA ||
           script == USCRIPT_HANGUL;
}

bool isHangul(char32_t c) {
    UErrorCode status = U_ZERO_ERROR;
    return uscript_getScript(static_cast<UChar32>(c), &status) == USCRIPT_HANGUL;
}

std::string folded(std::string_view text) {
    std::u32string result;
    for (const char32_t c : decomposed(codePoints(text))) {
        if (u_charType(static_cast<UChar32>(c)) == U_NON_SPACING_MARK) continue;
        const auto lower = static_cast<char32_t>(u_tolower(static_cast<UChar32>(c)));
        if (const char* plain = plainSpelling(lower)) {
            for (; *plain != 0; ++plain)
                result.push_back(static_cast<char32_t>(*plain));
        } else {
            result.push_back(lower);
        }
    }
    return toUTF8(result);
}

std::string foldedKey(std::string_view text) {
    std::string key = folded(text);
    key.erase(std::remove_if(key.begin(), key.end(), [](char c) { return !isWordByte(c); }), key.end());
    return key;
}

std::vector<std::string> foldedWords(std::string_view text) {
    std::vector<std::string> words;
    for (const auto& part : splitAtSpaces(folded(text))) {
        const auto first = std::find_if(part.begin(), part.end(), isWordByte);
        const auto last = std::find_if(part.rbegin(), part.rend(), isWordByte).base();
        if (first < last) words.emplace_back(first, last);
    }
    return words;
}

int countDigits(std::string_view text) {
    return static_cast<int>(std::count_if(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }));
}

int countLetters(std::string_view text) {
    const auto points = codePoints(text);
    return static_cast<int>(std::count_if(points.begin(), points.end(), isLetter));
}

int length(std::string_view text) {
    return static_cast<int>(codePoints(text).size());
}

bool isAllCapitals(std::string_view text) {
    const auto points = codePoints(text);
    const bool anySmall =
        std::any_of(points.begin(), points.end(), [](char32_t c) { return u_islower(static_cast<UChar32>(c)) != 0; });
    return !anySmall && std::any_of(points.begin(), points.end(), isCapital);
}

std::string simplified(std::string_view text) {
    const auto words = splitAtSpaces(text);
    std::string all;
    for (const auto& word : words) {
        if (!all.empty()) all += ' ';
        all += word;
    }
    return all;
}

std::string trimmed(std::string_view text, std::string_view characters) {
    const auto first = text.find_first_not_of(characters);
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(characters) - first + 1));
}

std::vector<std::string> splitAtSpaces(std::string_view text) {
    std::vector<std::string> words;
    std::u32string word;
    const auto points = codePoints(text);
    for (const char32_t c : points) {
        if (!isSpace(c)) {
            word.push_back(c);
        } else if (!word.empty()) {
            words.push_back(toUTF8(word));
            word.clear();
        }
    }
    if (!word.empty()) words.push_back(toUTF8(word));
    return words;
}

bool startsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

bool endsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

int editDistance(std::string_view a, std::string_view b, int bound) {
    if (std::max(a.size(), b.size()) - std::min(a.size(), b.size()) > static_cast<std::size_t>(bound)) return bound + 1;
    std::vector<int> row(b.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (std::size_t i = 1; i <= a.size(); ++i) {
        int diagonal = row[0]++;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const int replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return std::min(row[b.size()], bound + 1);
}

}  // namespace qv::recognition
