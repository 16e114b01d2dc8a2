#pragma once

#include <array>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

/// Text rules written down again, slowly and by hand, over a small alphabet of troublesome characters: what the real
/// ones are compared with. Nothing here uses them or a library of Unicode.
namespace testsupport {

struct NaiveCharacter {
    std::u16string_view text;
    std::u16string_view lower;
    std::u16string_view title;
    enum Kind { kOther, kLetter, kUpperLetter, kPunctuation, kSpace, kNewline } kind = kOther;
    bool ignorable = false;
    bool cased = false;
};

inline constexpr auto kNaiveAlphabet = [] {
    using C = NaiveCharacter;
    return std::to_array<C>({
        {u"a", u"a", u"A", C::kLetter, false, true},
        {u"b", u"b", u"B", C::kLetter, false, true},
        {u"d", u"d", u"D", C::kLetter, false, true},
        {u"j", u"j", u"J", C::kLetter, false, true},
        {u"m", u"m", u"M", C::kLetter, false, true},
        {u"r", u"r", u"R", C::kLetter, false, true},
        {u"s", u"s", u"S", C::kLetter, false, true},
        {u"t", u"t", u"T", C::kLetter, false, true},
        {u"D", u"d", u"D", C::kUpperLetter, false, true},
        {u"J", u"j", u"J", C::kUpperLetter, false, true},
        {u"M", u"m", u"M", C::kUpperLetter, false, true},
        {u"R", u"r", u"R", C::kUpperLetter, false, true},
        {u"T", u"t", u"T", C::kUpperLetter, false, true},
        {u"3", u"3", u"3"},
        {u"+", u"+", u"+"},
        {std::u16string_view(u"\0", 1), std::u16string_view(u"\0", 1), std::u16string_view(u"\0", 1)},
        {u" ", u" ", u" ", C::kSpace},
        {u"\t", u"\t", u"\t", C::kSpace},
        {u"\u00A0", u"\u00A0", u"\u00A0", C::kSpace},
        {u"\u3000", u"\u3000", u"\u3000", C::kSpace},
        {u"\n", u"\n", u"\n", C::kNewline},
        {u"\u0085", u"\u0085", u"\u0085", C::kNewline},
        {u"\u2028", u"\u2028", u"\u2028", C::kNewline},
        {u"-", u"-", u"-", C::kPunctuation},
        {u"'", u"'", u"'", C::kPunctuation, true},
        {u"&", u"&", u"&", C::kPunctuation},
        {u".", u".", u".", C::kPunctuation, true},
        {u",", u",", u",", C::kPunctuation},
        {u"\u2019", u"\u2019", u"\u2019", C::kPunctuation, true},
        {u"\u00E9", u"\u00E9", u"\u00C9", C::kLetter, false, true},
        {u"\u00DF", u"\u00DF", u"Ss", C::kLetter, false, true},
        {u"\u0130", u"i\u0307", u"\u0130", C::kUpperLetter, false, true},
        {u"\u03A3", u"\u03C3", u"\u03A3", C::kUpperLetter, false, true},
        {u"\u03C2", u"\u03C2", u"\u03A3", C::kLetter, false, true},
        {u"\u017F", u"\u017F", u"S", C::kLetter, false, true},
        {u"\u212A", u"k", u"\u212A", C::kUpperLetter, false, true},
        {u"\u01C6", u"\u01C6", u"\u01C5", C::kLetter, false, true},
        {u"\u01C4", u"\u01C6", u"\u01C5", C::kUpperLetter, false, true},
        {u"\u01C5", u"\u01C6", u"\u01C5", C::kUpperLetter, false, true},
        {u"\u0149", u"\u0149", u"\u02BCN", C::kLetter, false, true},
        {u"\u0301", u"\u0301", u"\u0301", C::kOther, true},
        {u"\u00AD", u"\u00AD", u"\u00AD", C::kOther, true},
        {u"\u4E2D", u"\u4E2D", u"\u4E2D", C::kLetter},
        {u"\U00010400", u"\U00010428", u"\U00010400", C::kUpperLetter, false, true},
        {u"\U00010428", u"\U00010428", u"\U00010400", C::kLetter, false, true},
    });
}();

using NaiveText = std::vector<const NaiveCharacter*>;

NaiveText naiveText(std::u16string_view text);
std::u16string naiveJoined(const NaiveText& text);
std::u16string naiveLowercased(const NaiveText& text);
std::u16string naiveCapitalized(const NaiveText& text);

/// Up to `longest` pieces, each one of `pieces`; the same for the same state of `random`.
template <typename String>
String randomText(std::mt19937& random, const std::vector<String>& pieces, std::size_t longest) {
    String text;
    for (std::size_t left = random() % (longest + 1); left > 0; --left)
        text += pieces[random() % pieces.size()];
    return text;
}

/// The alphabet as pieces for `randomText`.
std::vector<std::u16string> naivePieces();

}  // namespace testsupport
