#include "People/OnePerson.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

namespace {

using qvhost::canBeOnePerson;
using qvhost::Person;

Person called(const QVString& name) {
    return {name, std::nullopt, {}};
}

struct Row {
    std::string_view what;
    QVString one;
    QVString other;
    bool behindOwnAddress;
    bool behindOffice;
};

const Row kRows[] = {
    {"the same name", "Ada Example", "Ada Example", true, true},
    {"case and white space", "ADA  EXAMPLE", "Ada Example", true, true},
    {"title and degree", "Dr. Ada Example, PhD", "Ada Example", true, true},
    {"a middle name more", "Ada Mary Example", "Ada Example", true, true},
    {"an initial", "A. Example", "Ada Example", true, true},
    {"another initial", "B. Example", "Ada Example", true, false},
    {"family name first", "Example, Ada", "Ada Example", true, true},
    {"a misread letter", "Ada Exanple", "Ada Example", true, true},
    {"a misread letter in one word", "Jürgen Müller", "Jurgen Muller", true, true},
    {"a hyphen more", "Anna Huber-Maier", "Anna Huber", true, true},
    {"new family name", "Ada Married", "Ada Example", true, false},
    {"two of a family", "Anna Huber", "Peter Huber", true, false},
    {"nothing in common", "Cy New", "Ada Example", false, false},
    {"initials only have no word in common", "A. E.", "Bo Sample", false, false},
    {"no name", std::nullopt, "Ada Example", true, true},
    {"blank name", " ", "Ada Example", true, true},
    {"no names", std::nullopt, "", true, true},
    {"different scripts", "王小明", "Xiaoming Wang", true, true},
    {"Cyrillic and Latin", "Иван Петров", "Ivan Petrov", true, true},
    {"two in one script", "Иван Петров", "Анна Орлова", false, false},
    {"one in Cyrillic", "ИВАН ПЕТРОВ", "Иван Петров", true, true},
};

TEST(OnePerson, NamesSayWhetherAnAddressIsShared) {
    for (const Row& row : kRows) {
        EXPECT_EQ(canBeOnePerson(called(row.one), called(row.other), "ada@example.com"), row.behindOwnAddress)
            << row.what;
        EXPECT_EQ(canBeOnePerson(called(row.other), called(row.one), "ada@example.com"), row.behindOwnAddress)
            << row.what;
        EXPECT_EQ(canBeOnePerson(called(row.one), called(row.other), "info@example.com"), row.behindOffice) << row.what;
        EXPECT_EQ(canBeOnePerson(called(row.other), called(row.one), "info@example.com"), row.behindOffice) << row.what;
    }
}

TEST(OnePerson, KnowsAnOfficeByItsAddress) {
    const Person anna = called("Anna Huber");
    const Person peter = called("Peter Huber");
    for (const std::string_view office :
         {"info@huber.example", "INFO@huber.example", "büro@huber.example", "post@x.example", "huber@huber.example",
          "Huber@HUBER.example", "sales@x.example"})
        EXPECT_FALSE(canBeOnePerson(anna, peter, office)) << office;
    for (const std::string_view own :
         {"huber@example.com", "information@huber.example", "info", "", "@", "info.huber@x.example"})
        EXPECT_TRUE(canBeOnePerson(anna, peter, own)) << own;
}

TEST(OnePerson, AShortWordHasNoMisreadLetter) {
    EXPECT_FALSE(canBeOnePerson(called("Hans Beck"), called("Jens Bock"), "mail.box@example.com"));
    EXPECT_TRUE(canBeOnePerson(called("Hans Becker"), called("Jens Backer"), "mail.box@example.com"));
}

struct WordRow {
    std::string_view what;
    std::string_view one;
    std::string_view other;
    bool areAlike;
};

const WordRow kWordRows[] = {
    {"changed at the start", "Becker", "Hecker", true},
    {"changed in the middle", "Becker", "Beckar", true},
    {"changed at the end", "Becker", "Beckes", true},
    {"left out at the start", "Becker", "ecker", true},
    {"left out in the middle", "Becker", "Beker", true},
    {"left out at the end", "Becker", "Becke", true},
    {"put in at the start", "Becker", "Abecker", true},
    {"put in in the middle", "Becker", "Becoker", true},
    {"put in at the end", "Becker", "Beckers", true},
    {"doubled", "Becker", "Beccker", true},
    {"doubled at the start", "Anabell", "Aanabell", true},
    {"doubled at the end", "Anabel", "Anabell", true},
    {"one of many", "Aaaaaa", "Aaaaa", true},
    {"one in many", "Aaaaaa", "Aabaaa", true},
    {"two of many", "Aaaaaaa", "Aaaaa", false},
    {"two in many", "Aaaaaaa", "Abaabaa", false},
    {"two changed", "Becker", "Hecket", false},
    {"two changed side by side", "Becker", "Beakar", false},
    {"two changed places", "Becker", "Bekcer", false},
    {"one left out and one put in", "Becker", "Eckers", false},
    {"one put in and one changed", "Becker", "Beckert", true},
    {"one put in and another changed", "Becker", "Heckert", false},
    {"turned around", "Ababab", "Bababa", false},
    {"the same in a short word", "Anna", "Anna", true},
    {"left out of a short word", "Anna", "Ana", false},
    {"left out until it is short", "Becks", "Beck", false},
    {"an umlaut", "Müller", "Muller", true},
    {"an umlaut left out", "Müller", "Mller", true},
    {"an umlaut for two letters", "Mueller", "Müller", false},
    {"two accents", "Dvořák", "Dvorak", false},
    {"Cyrillic, put in", "Петров", "Петрова", true},
    {"Cyrillic, changed", "Петров", "Петроф", true},
    {"Cyrillic, two changed", "Петров", "Сидров", false},
    {"Greek, left out", "Παππάς", "Παπάς", true},
    {"nothing in common", "Becker", "Lorenz", false},
};

TEST(OnePerson, OneMisreadLetterMakesNoOtherWord) {
    for (const WordRow& row : kWordRows) {
        const Person one = called(std::string(row.one));
        const Person other = called(std::string(row.other));
        EXPECT_EQ(canBeOnePerson(one, other, "mail.box@example.com"), row.areAlike) << row.what;
        EXPECT_EQ(canBeOnePerson(other, one, "mail.box@example.com"), row.areAlike) << row.what;
    }
}

/// Letters to change, to leave out or to put in until one is the other (Wagner and Fischer, "The String-to-String
/// Correction Problem", 1974).
std::size_t distance(std::string_view one, std::string_view other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < one.size(); ++i) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < other.size(); ++j) {
            const std::size_t changed = diagonal + (one[i] == other[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

/// Every word of so many letters, of which there are two.
void addWords(std::size_t length, std::vector<std::string>& words) {
    for (unsigned bits = 0; bits < 1U << length; ++bits) {
        std::string& word = words.emplace_back(length, 'b');
        for (std::size_t i = 0; i < length; ++i)
            if ((bits >> i & 1U) != 0) word[i] = 'k';
    }
}

TEST(OnePerson, WordsAreAlikeUpToADistanceOfOne) {
    std::vector<std::string> words;
    for (const std::size_t length : {5U, 6U, 7U})
        addWords(length, words);
    for (const std::string& one : words) {
        for (const std::string& other : words)
            ASSERT_EQ(canBeOnePerson(called(one), called(other), "a@example.com"), distance(one, other) <= 1)
                << one << " and " << other;
    }
}

TEST(OnePerson, ALongNameCostsNoTime) {
    std::string words;
    for (int i = 0; i < 200; ++i)
        words += "word" + std::to_string(i) + " ";
    EXPECT_TRUE(canBeOnePerson(called(words), called(words), "info@example.com"));
    const std::string endless(900, 'a');
    EXPECT_TRUE(canBeOnePerson(called(endless + " x"), called(endless + " x"), "info@example.com"));
    EXPECT_FALSE(canBeOnePerson(called(endless), called(std::string(900, 'b')), "ada@example.com"));
}

}  // namespace
