#include "VCard/NameWords.h"

#include "QVPlatform/Text.h"

#include <algorithm>
#include <set>

namespace {

using Words = std::set<std::string, std::less<>>;

const Words& titles() {
    static const Words words{"dr",   "prof",     "professor", "doctor",    "mr",       "mrs",  "ms",
                             "miss", "mx",       "herr",      "frau",      "sir",      "dame", "mme",
                             "mlle", "reverend", "dipl-ing",  "dr-ing",    "capt",     "sgt",  "dipl-kfm",
                             "srta", "dott",     "dipl-inf",  "univ-prof", "dipl-phys"};
    return words;
}

/// Titles that are names when they have no dot.
const Words& dottedTitles() {
    static const Words words{"hr",  "fr",   "rev", "hon", "col", "gen", "lt",  "maj", "ing",
                             "mag", "dipl", "m",   "sr",  "sra", "sig", "drs", "ir",  "pd"};
    return words;
}

const Words& continuations() {
    static const Words words{"med",   "dent",  "vet", "phil",  "nat", "rer",  "jur",  "iur",
                             "ing",   "oec",   "pol", "habil", "hc",  "h",    "c",    "mult",
                             "theol", "techn", "sc",  "dr",    "em",  "univ", "dipl", "math"};
    return words;
}

const Words& suffixes() {
    static const Words words{"jr",  "sr",  "junior", "senior", "ii",  "iii", "iv",  "phd",   "md",
                             "mba", "cpa", "esq",    "dds",    "cfa", "msc", "bsc", "ba",    "ma",
                             "bs",  "ms",  "llm",    "llb",    "jd",  "rn",  "dvm", "dphil", "mph",
                             "pe",  "pmp", "obe",    "mbe",    "cbe", "frs", "ret", "meng",  "beng"};
    return words;
}

const Words& particles() {
    static const Words words{"van", "von", "der", "den", "de",  "del", "della", "di",  "da",  "dos", "das", "do",
                             "du",  "la",  "le",  "las", "los", "el",  "al",    "bin", "ibn", "ben", "ter", "ten",
                             "te",  "zu",  "zur", "zum", "vom", "af",  "av",    "op",  "dem", "des", "dela"};
    return words;
}

/// Family names of two Latin letters that are written in capitals before a given name.
const Words& shortFamilyNames() {
    static const Words words{"li", "wu", "xu", "hu", "ma", "he", "yu", "lu", "su", "du", "ye", "le", "ho", "ng", "ko"};
    return words;
}

std::string plain(const std::string& word) {
    std::string text = qv::Text::lowercased(word);
    std::erase(text, '.');
    return text;
}

bool isHan(char16_t unit) {
    return (unit >= 0x3400 && unit <= 0x9FFF) || (unit >= 0xF900 && unit <= 0xFAFF) || unit == 0x3005;
}

bool isHangul(char16_t unit) {
    return unit >= 0xAC00 && unit <= 0xD7A3;
}

bool isKana(char16_t unit) {
    return unit >= 0x3041 && unit <= 0x30FF;
}

bool isBlankUnit(char16_t unit) {
    return qv::Text::isWhitespace(unit) || qv::Text::isNewline(unit);
}

bool isDoubleFamilyName(std::u16string_view pair) {
    static const std::set<std::u16string, std::less<>> names{
        u"欧阳", u"歐陽", u"司马", u"司馬", u"诸葛", u"諸葛", u"上官", u"司徒", u"东方", u"東方",
        u"皇甫", u"尉迟", u"公孙", u"公孫", u"慕容", u"令狐", u"宇文", u"长孙", u"夏侯", u"端木",
        u"百里", u"南宫", u"남궁", u"황보", u"제갈", u"선우", u"독고", u"사공", u"서문"};
    return names.contains(pair);
}

}  // namespace

std::vector<std::string> wordsOfName(std::string_view text) {
    std::vector<std::string> words;
    std::u16string word;
    const auto end = [&] {
        if (!word.empty()) words.push_back(qv::Text::utf8(word));
        word.clear();
    };
    for (const char16_t unit : qv::Text::utf16(text)) {
        if (isBlankUnit(unit)) {
            end();
        } else if (unit == u',') {
            end();
            words.emplace_back(",");
        } else {
            word += unit;
        }
    }
    end();
    return words;
}

bool isTitle(const std::string& word) {
    return titles().contains(plain(word)) || (word.ends_with('.') && dottedTitles().contains(plain(word)));
}

bool isTitleContinuation(const std::string& word) {
    return word.ends_with('.') && continuations().contains(plain(word));
}

bool isDegreeOrGeneration(const std::string& word) {
    if (!suffixes().contains(plain(word))) return false;
    // "Ma" and "Ba" are family names.
    const bool isShort = plain(word).size() == 2 && word.find('.') == std::string::npos;
    const std::string lower = qv::Text::lowercased(word);
    return !isShort || lower == "jr" || lower == "sr" || word != qv::Text::capitalized(word);
}

bool isParticle(const std::string& word) {
    return particles().contains(qv::Text::lowercased(word));
}

bool isNickname(const std::string& word) {
    const auto isWrapped = [&](std::string_view open, std::string_view close) {
        return word.size() > open.size() + close.size() && word.starts_with(open) && word.ends_with(close);
    };
    return isWrapped("(", ")") || isWrapped("\"", "\"") || isWrapped("“", "”") || isWrapped("„", "“");
}

bool isInCapitals(const std::string& word) {
    const std::u16string units = qv::Text::utf16(word);
    const std::u16string lower = qv::Text::lowercased(std::u16string_view(units));
    const auto isLetterInCapitals = [](char16_t unit) { return qv::Text::isUppercaseLetter(unit) || unit == u'-'; };
    if (lower == units || !std::all_of(units.begin(), units.end(), isLetterInCapitals)) return false;
    return units.size() > 2 || shortFamilyNames().contains(qv::Text::utf8(lower));
}

bool isEastAsian(std::u16string_view text) {
    const auto belongs = [](char16_t unit) {
        return isHan(unit) || isHangul(unit) || isKana(unit) || isBlankUnit(unit);
    };
    return !text.empty() && std::all_of(text.begin(), text.end(), belongs);
}

std::size_t lengthOfEastAsianFamilyName(std::u16string_view name) {
    if (std::any_of(name.begin(), name.end(), isKana) || name.size() < 2 || name.size() > 4) return name.size();
    if (name.size() > 2 && isDoubleFamilyName(name.substr(0, 2))) return 2;
    return name.size() == 4 && isHan(name.front()) ? 2 : 1;
}
