#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What single words of a name are. Case and dots do not count where nothing else is said.

/// The words between blanks of any kind; a comma is a word of its own.
std::vector<std::string> wordsOfName(std::string_view text);

bool isTitle(const std::string& word);
/// Words that only go on with a title: "med." in "Dr. med.".
bool isTitleContinuation(const std::string& word);
bool isDegreeOrGeneration(const std::string& word);
bool isParticle(const std::string& word);
/// In quotes or parentheses.
bool isNickname(const std::string& word);
/// At least three letters, all of them capitals, or a family name of two letters that is known for it.
bool isInCapitals(const std::string& word);

/// Whether a text is in Chinese characters, kana or Hangul alone (blanks apart).
bool isEastAsian(std::u16string_view text);
/// How many characters at the beginning of an East Asian name without blanks are the family name.
std::size_t lengthOfEastAsianFamilyName(std::u16string_view name);
