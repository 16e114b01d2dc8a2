#include "People/OnePerson.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

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
