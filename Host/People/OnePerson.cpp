#include "People/OnePerson.h"

#include "QVPlatform/Text.h"
#include "QVSocialSearch/QVPersonName.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <vector>

namespace qvhost {
namespace {

using Word = std::u16string;
using Words = std::vector<Word>;

/// Longer words are compared by these many letters: nobody's name needs more, and a hostile one costs no time.
constexpr std::size_t kLongestWord = 40;
constexpr std::size_t kMostWords = 12;

constexpr auto kOfficeNames = std::to_array<std::string_view>(
    {"abuse",     "accounting",  "accounts",   "accueil",     "admin",    "anfrage",   "atelier",     "biuro",
     "booking",   "bookings",    "buero",      "bureau",      "bonjour",  "büro",      "commercial",  "company",
     "contact",   "contacto",    "contato",    "contatto",    "empfang",  "enquiries", "firma",       "general",
     "hallo",     "hello",       "help",       "hostmaster",  "hr",       "info",      "informacion", "informazioni",
     "inquiries", "jobs",        "kantoor",    "kanzlei",     "kontakt",  "kontor",    "mail",        "marketing",
     "office",    "post",        "posta",      "postmaster",  "praxis",   "presse",    "press",       "reception",
     "sales",     "secretariat", "segreteria", "sekretariat", "service",  "shop",      "studio",      "support",
     "team",      "vendite",     "ventas",     "verkauf",     "vertrieb", "webmaster", "welcome",     "zentrale"});

/// "huber@huber.example" is the whole family's.
bool isOffice(std::string_view address) {
    const std::string lowered = qv::Text::lowercased(address);
    const std::size_t at = lowered.find('@');
    if (at == std::string::npos || at == 0) return false;
    const std::string name = lowered.substr(0, at);
    return std::find(kOfficeNames.begin(), kOfficeNames.end(), name) != kOfficeNames.end() ||
           name == lowered.substr(at + 1, lowered.find('.', at + 1) - at - 1);
}

void addWords(const std::string& text, Words& words) {
    const std::u16string lowered = qv::Text::lowercased(qv::Text::utf16(text));
    Word word;
    for (const char16_t unit : lowered + u' ') {
        if (!qv::Text::isWhitespace(unit) && !qv::Text::isNewline(unit) && !qv::Text::isPunctuation(unit)) {
            if (word.size() < kLongestWord) word.push_back(unit);
        } else if (!word.empty()) {
            if (words.size() < kMostWords) words.push_back(word);
            word.clear();
        }
    }
}

Words wordsOf(const Person& person) {
    const QVPersonName name = QVPersonName::nameWithText(person.fullName.value_or(""));
    Words words;
    for (const std::string* part : {&name.given, &name.additional, &name.family})
        addWords(*part, words);
    return words;
}

bool isLatin(const Words& words) {
    return std::any_of(words.begin(), words.end(), [](const Word& word) {
        return std::any_of(word.begin(), word.end(), [](char16_t unit) { return unit >= u'a' && unit <= u'z'; });
    });
}

bool hasFewerLetters(const Word& one, const Word& other) {
    return one.size() < other.size();
}

/// Whether one letter changed, left out or put in, or none, makes one the other: what both begin with and what both end
/// with is then all of the longer word but for one letter.
bool areOneLetterApart(const Word& one, const Word& other) {
    const auto& [shorter, longer] = std::minmax(one, other, hasFewerLetters);
    if (longer.size() - shorter.size() > 1) return false;
    const auto begin = std::mismatch(shorter.begin(), shorter.end(), longer.begin()).first - shorter.begin();
    const auto end = std::mismatch(shorter.rbegin(), shorter.rend(), longer.rbegin()).first - shorter.rbegin();
    return static_cast<std::size_t>(begin + end) + 1 >= longer.size();
}

bool areAlike(const Word& one, const Word& other) {
    constexpr std::size_t kForgiving = 5;
    return one == other || (std::min(one.size(), other.size()) >= kForgiving && areOneLetterApart(one, other));
}

bool isInitialOf(const Word& initial, const Word& word) {
    return initial.size() == 1 && word.front() == initial.front();
}

bool haveAWordInCommon(const Words& one, const Words& other) {
    return std::any_of(one.begin(), one.end(), [&](const Word& word) {
        return std::any_of(other.begin(), other.end(), [&](const Word& theirs) { return areAlike(word, theirs); });
    });
}

/// Whether each word of the shorter name stands for one of its own in the longer name.
bool namesAgree(const Words& one, const Words& other) {
    const Words& shorter = one.size() <= other.size() ? one : other;
    Words longer = one.size() <= other.size() ? other : one;
    const auto takes = [&longer](const Word& word, auto fits) {
        const auto theirs =
            std::find_if(longer.begin(), longer.end(), [&](const Word& own) { return fits(word, own); });
        if (theirs == longer.end()) return false;
        longer.erase(theirs);
        return true;
    };
    const auto isShort = [](const Word& word, const Word& own) {
        return isInitialOf(word, own) || isInitialOf(own, word);
    };
    Words open;
    std::copy_if(shorter.begin(), shorter.end(), std::back_inserter(open),
                 [&](const Word& word) { return !takes(word, areAlike); });
    return std::all_of(open.begin(), open.end(), [&](const Word& word) { return takes(word, isShort); });
}

}  // namespace

bool canBeOnePerson(const Person& one, const Person& other, std::string_view commonAddress) {
    const Words words = wordsOf(one);
    const Words others = wordsOf(other);
    if (words.empty() || others.empty() || isLatin(words) != isLatin(others)) return true;
    return isOffice(commonAddress) ? namesAgree(words, others) : haveAWordInCommon(words, others);
}

}  // namespace qvhost
