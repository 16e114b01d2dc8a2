#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qv::recognition {

/// What the rules ask about text. All texts are UTF-8; bytes that are not are taken as U+FFFD. No function looks at the
/// C locale. Any thread.

/// The code points of a text, and back.
std::u32string codePoints(std::string_view text);
std::string toUTF8(std::u32string_view codePoints);

bool isLetter(char32_t c);
bool isCapital(char32_t c);
bool isDigit(char32_t c);  ///< ASCII digits only: others are not printed in numbers that a rule looks at
/// Chinese, Japanese or Korean script.
bool isEastAsian(char32_t c);
bool isHangul(char32_t c);

/// Lower case, without accents, so that word lists need one spelling: "Geschäftsführer" → "geschaftsfuhrer", ß → ss.
std::string folded(std::string_view text);
/// `folded` with only letters and digits kept.
std::string foldedKey(std::string_view text);
/// The words of a text: split at white space, punctuation at both ends dropped, folded. Empty ones left out.
std::vector<std::string> foldedWords(std::string_view text);

int countDigits(std::string_view text);
int countLetters(std::string_view text);
/// Length in code points.
int length(std::string_view text);
/// Whether there are letters and none is small.
bool isAllCapitals(std::string_view text);
/// Without white space at the ends and with single spaces inside.
std::string simplified(std::string_view text);
/// Without the given ASCII characters at both ends.
std::string trimmed(std::string_view text, std::string_view characters);
std::vector<std::string> splitAtSpaces(std::string_view text);
bool startsWith(std::string_view text, std::string_view start);
bool endsWith(std::string_view text, std::string_view end);

/// Edits (insert, remove, replace) that lead from one to the other, at most `bound` + 1. Counts bytes.
int editDistance(std::string_view a, std::string_view b, int bound);

}  // namespace qv::recognition
