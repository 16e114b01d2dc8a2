#include "QVSocialSearch/QVPersonName.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct NameRow {
    std::string test;
    std::string text;
    std::string family;
    std::string given;
    std::string additional = {};
    std::string prefix = {};
    std::string suffix = {};
};

class PersonNames : public testing::TestWithParam<NameRow> {};

TEST_P(PersonNames, AreTakenApart) {
    const QVPersonName name = QVPersonName::nameWithText(GetParam().text);
    EXPECT_EQ(name.family, GetParam().family);
    EXPECT_EQ(name.given, GetParam().given);
    EXPECT_EQ(name.additional, GetParam().additional);
    EXPECT_EQ(name.prefix, GetParam().prefix);
    EXPECT_EQ(name.suffix, GetParam().suffix);
}

INSTANTIATE_TEST_SUITE_P(
    Western, PersonNames,
    testing::Values(NameRow{"Two", "Ada Example", "Example", "Ada"}, NameRow{"One", "Ada", "", "Ada"},
                    NameRow{"Empty", "", "", ""}, NameRow{"Blank", " \t\n ", "", ""}, NameRow{"Commas", " , ,", "", ""},
                    NameRow{"Blanks", "  Ada \t Example\n", "Example", "Ada"},
                    NameRow{"Middle", "Ada B. C. Example", "Example", "Ada", "B. C."},
                    NameRow{"Hyphens", "Jean-Luc Dupont-Martin", "Dupont-Martin", "Jean-Luc"},
                    NameRow{"Doctor", "Dr. Ada Example", "Example", "Ada", "", "Dr."},
                    NameRow{"DoctorWithoutDot", "Dr Ada Example", "Example", "Ada", "", "Dr"},
                    NameRow{"Titles", "Prof. Dr. med. dent. Ada Example", "Example", "Ada", "", "Prof. Dr. med. dent."},
                    NameRow{"HonoraryDoctor", "Dr. h.c. Ada Example", "Example", "Ada", "", "Dr. h.c."},
                    NameRow{"Engineer", "Dipl.-Ing. Max Muster", "Muster", "Max", "", "Dipl.-Ing."},
                    NameRow{"HerrDoctor", "Herr Dr. Max Muster", "Muster", "Max", "", "Herr Dr."},
                    NameRow{"TitleAndOneWord", "Dr. Smith", "Smith", "", "", "Dr."},
                    NameRow{"TitleAlone", "Dr.", "", "Dr."}, NameRow{"InitialM", "M Example", "Example", "M"},
                    NameRow{"MonsieurDot", "M. Dupont", "Dupont", "", "", "M."},
                    NameRow{"GivenNameLikeATitle", "Don Draper", "Draper", "Don"},
                    NameRow{"Junior", "Sam Example Jr.", "Example", "Sam", "", "", "Jr."},
                    NameRow{"JuniorWithComma", "Sam Example, Jr.", "Example", "Sam", "", "", "Jr."},
                    NameRow{"Third", "Sam B. Example III", "Example", "Sam", "B.", "", "III"},
                    NameRow{"Degrees", "Ada Example, Ph.D., M.D.", "Example", "Ada", "", "", "Ph.D. M.D."},
                    NameRow{"DegreeWithoutComma", "Ada Example PhD", "Example", "Ada", "", "", "PhD"},
                    NameRow{"TitleAndDegree", "Dr. Ada Example, MBA", "Example", "Ada", "", "Dr.", "MBA"},
                    NameRow{"FamilyNameLikeADegree", "Jack Ma", "Ma", "Jack"},
                    NameRow{"FamilyFirstWithComma", "Example, Ada", "Example", "Ada"},
                    NameRow{"FamilyFirstWithMiddle", "van den Berg, Jan P.", "van den Berg", "Jan", "P."},
                    NameRow{"FamilyFirstWithTitle", "Example, Dr. Ada", "Example", "Ada", "", "Dr."},
                    NameRow{"FamilyFirstWithSuffix", "Example, Sam, Jr.", "Example", "Sam", "", "", "Jr."},
                    NameRow{"TrailingComma", "Ada Example,", "Example", "Ada"},
                    NameRow{"LeadingComma", ", Ada Example", "Example", "Ada"},
                    NameRow{"Nickname", "Robert \"Bob\" Example", "Example", "Robert", "\"Bob\""},
                    NameRow{"NicknameBehind", "Robert Example (Bob)", "Example", "Robert", "(Bob)"},
                    NameRow{"Apostrophe", "Conan O'Brien", "O'Brien", "Conan"}),
    [](const auto& row) { return row.param.test; });

INSTANTIATE_TEST_SUITE_P(
    Particles, PersonNames,
    testing::Values(NameRow{"Van", "Ludwig van Beethoven", "van Beethoven", "Ludwig"},
                    NameRow{"VanDen", "Jan van den Berg", "van den Berg", "Jan"},
                    NameRow{"CapitalParticles", "Jan Van Den Berg", "Van Den Berg", "Jan"},
                    NameRow{"VonUndZu", "Karl Theodor von der Weide", "von der Weide", "Karl", "Theodor"},
                    NameRow{"DeLa", "Juan de la Cruz", "de la Cruz", "Juan"}, NameRow{"Al", "Al Gore", "Gore", "Al"},
                    NameRow{"Bin", "Ahmad bin Said", "bin Said", "Ahmad"},
                    NameRow{"LastWordIsNoParticle", "Maria La", "La", "Maria"},
                    NameRow{"Y", "José Ortega y Gasset", "Ortega y Gasset", "José"},
                    NameRow{"YAtTheBeginning", "Ortega y Gasset", "Gasset", "Ortega", "y"}),
    [](const auto& row) { return row.param.test; });

INSTANTIATE_TEST_SUITE_P(Capitals, PersonNames,
                         testing::Values(NameRow{"InFront", "MAO Zedong", "MAO", "Zedong"},
                                         NameRow{"Behind", "Jean DUPONT", "DUPONT", "Jean"},
                                         NameRow{"Two", "Carmen GARCIA LOPEZ", "GARCIA LOPEZ", "Carmen"},
                                         NameRow{"Short", "LI Wei", "LI", "Wei"},
                                         NameRow{"Initials", "JB Example", "Example", "JB"},
                                         NameRow{"All", "ADA EXAMPLE", "EXAMPLE", "ADA"},
                                         NameRow{"AllWithParticle", "LUDWIG VAN BEETHOVEN", "VAN BEETHOVEN", "LUDWIG"},
                                         NameRow{"Umlaut", "Jürgen MÜLLER", "MÜLLER", "Jürgen"},
                                         NameRow{"BothEnds", "AAA Bbb CCC", "CCC", "AAA", "Bbb"}),
                         [](const auto& row) { return row.param.test; });

INSTANTIATE_TEST_SUITE_P(
    EastAsian, PersonNames,
    testing::Values(
        NameRow{"TwoHan", "王伟", "王", "伟"}, NameRow{"ThreeHan", "毛泽东", "毛", "泽东"},
        NameRow{"DoubleFamilyName", "欧阳修", "欧阳", "修"}, NameRow{"FourWithDouble", "司马相如", "司马", "相如"},
        NameRow{"DoubleFamilyNameAlone", "欧阳", "欧", "阳"}, NameRow{"FourHan", "山田太郎", "山田", "太郎"},
        NameRow{"FiveHan", "長谷川太郎", "長谷川太郎", ""}, NameRow{"Blank", "山田 太郎", "山田", "太郎"},
        NameRow{"IdeographicBlank", "山田　太郎", "山田", "太郎"}, NameRow{"Kana", "やまだたろう", "やまだたろう", ""},
        NameRow{"KanaWithBlank", "やまだ たろう", "やまだ", "たろう"},
        NameRow{"HanAndKana", "高橋さくら", "高橋さくら", ""}, NameRow{"Hangul", "홍길동", "홍", "길동"},
        NameRow{"HangulTwo", "허준", "허", "준"}, NameRow{"HangulDouble", "남궁민수", "남궁", "민수"},
        NameRow{"HangulFour", "김아름별", "김", "아름별"}, NameRow{"One", "王", "王", ""},
        NameRow{"Mixed", "Wei 王", "王", "Wei"}),
    [](const auto& row) { return row.param.test; });

TEST(QVPersonNameTest, SurvivesOddTexts) {
    EXPECT_EQ(QVPersonName::nameWithText("\xFF\xFE").given, "\xEF\xBF\xBD\xEF\xBF\xBD");
    const std::string many = [] {
        std::string text;
        for (int i = 0; i < 100000; ++i)
            text += "Ada, ";
        return text;
    }();
    EXPECT_EQ(QVPersonName::nameWithText(many).given, many);
    EXPECT_EQ(QVPersonName::nameWithText(many.substr(0, 997)).family, "Ada");
}

}  // namespace
