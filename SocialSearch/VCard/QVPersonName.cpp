#include "QVSocialSearch/QVPersonName.h"

#include "QVPlatform/Text.h"
#include "VCard/NameWords.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace {

using Words = std::vector<std::string>;

constexpr std::size_t kMaximumLength = 1000;

std::string joined(Words::const_iterator begin, Words::const_iterator end) {
    std::string text;
    for (auto word = begin; word != end; ++word)
        text += (text.empty() ? "" : " ") + *word;
    return text;
}

std::string joined(const Words& words) {
    return joined(words.begin(), words.end());
}

Words takeTitles(Words& words) {
    std::size_t count = 0;
    // The last word is always a name.
    while (count + 1 < words.size() && (isTitle(words[count]) || (count > 0 && isTitleContinuation(words[count]))))
        ++count;
    Words taken(words.begin(), words.begin() + static_cast<std::ptrdiff_t>(count));
    words.erase(words.begin(), words.begin() + static_cast<std::ptrdiff_t>(count));
    return taken;
}

/// Degrees at the end, with the commas between them; one word always remains.
Words takeSuffixes(Words& words) {
    Words taken;
    while (words.size() > 1 && (words.back() == "," || isDegreeOrGeneration(words.back()))) {
        if (words.back() != ",") taken.insert(taken.begin(), words.back());
        words.pop_back();
    }
    return taken;
}

Words takeNicknames(Words& words) {
    Words taken;
    std::copy_if(words.begin(), words.end(), std::back_inserter(taken), isNickname);
    if (taken.size() == words.size()) return {};
    std::erase_if(words, isNickname);
    return taken;
}

/// Turns "Family, Given" round: the words of the family name go, the others stay.
Words takeWordsBeforeComma(Words& words) {
    Words family;
    const auto comma = std::find(words.begin(), words.end(), ",");
    if (comma != words.end() && comma != words.begin()) {
        family.assign(words.begin(), comma);
        words.erase(words.begin(), comma);
    }
    std::erase(words, ",");
    return family;
}

/// The words in capitals at one end, when the others are not.
Words takeWordsInCapitals(Words& words) {
    const auto firstOther = std::find_if_not(words.begin(), words.end(), isInCapitals);
    const auto lastOther = std::find_if_not(words.rbegin(), words.rend(), isInCapitals).base();
    if (firstOther == words.end() || std::any_of(firstOther, lastOther, isInCapitals)) return {};
    const bool areInFront = firstOther != words.begin();
    if (areInFront == (lastOther != words.end())) return {};
    const auto begin = areInFront ? words.begin() : lastOther;
    const auto end = areInFront ? firstOther : words.end();
    Words taken(begin, end);
    words.erase(begin, end);
    return taken;
}

/// The last word with the particles before it, and with the one that "y" joins to it.
Words takeLastName(Words& words) {
    const auto firstParticle = std::find_if(std::next(words.begin()), std::prev(words.end()), isParticle);
    auto begin = std::min(firstParticle, std::prev(words.end()));
    if (begin - words.begin() > 2 && *std::prev(begin) == "y") begin -= 2;
    Words taken(begin, words.end());
    words.erase(begin, words.end());
    return taken;
}

QVPersonName eastAsianName(const std::u16string& text) {
    QVPersonName name;
    const Words words = wordsOfName(qv::Text::utf8(text));
    if (words.size() > 1) {
        name.family = words.front();
        name.given = joined(words.begin() + 1, words.end());
        return name;
    }
    const std::size_t length = lengthOfEastAsianFamilyName(text);
    name.family = qv::Text::utf8(text.substr(0, length));
    name.given = qv::Text::utf8(text.substr(length));
    return name;
}

}  // namespace

QVPersonName QVPersonName::nameWithText(std::string_view displayName) {
    QVPersonName name;
    if (displayName.size() > kMaximumLength) {
        name.given = displayName;
        return name;
    }
    Words words = wordsOfName(displayName);
    if (std::all_of(words.begin(), words.end(), [](const std::string& word) { return word == ","; })) return {};
    if (const std::u16string text = qv::Text::utf16(joined(words)); isEastAsian(text)) return eastAsianName(text);

    name.suffix = joined(takeSuffixes(words));
    Words titles = takeTitles(words);
    const Words nicknames = takeNicknames(words);
    Words family = takeWordsBeforeComma(words);
    const Words moreTitles = takeTitles(words);
    titles.insert(titles.end(), moreTitles.begin(), moreTitles.end());
    if (family.empty() && words.size() > 1) family = takeWordsInCapitals(words);
    if (family.empty() && (words.size() > 1)) family = takeLastName(words);
    if (family.empty() && !titles.empty()) family.swap(words);

    name.prefix = joined(titles);
    name.family = joined(family);
    if (!words.empty()) name.given = words.front();
    if (words.size() > 1) name.additional = joined(words.begin() + 1, words.end());
    if (!nicknames.empty()) name.additional += (name.additional.empty() ? "" : " ") + joined(nicknames);
    return name;
}
