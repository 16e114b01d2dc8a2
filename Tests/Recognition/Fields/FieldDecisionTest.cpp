#include "Fields/FieldDecision.h"
#include "Recognition/Lines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace qv::recognition {
namespace {

std::multimap<FieldType, std::string> decided(const std::vector<TextLine>& lines, const std::string& language = "en") {
    std::multimap<FieldType, std::string> fields;
    for (const auto& field : decideFields(lines, language))
        fields.emplace(field.type, field.text);
    return fields;
}

using Fields = std::multimap<FieldType, std::string>;

TEST(FieldDecisionTest, ReadsAWholeCard) {
    EXPECT_EQ(
        decided({lineAt("Acme Tools Ltd", 100, 50, 45), lineAt("Jane Doe", 100, 150, 40),
                 lineAt("Sales Manager", 100, 205, 28), lineAt("Human Resources", 100, 245, 28),
                 lineAt("12 High Street", 100, 350, 25), lineAt("London SE1 9ZZ", 100, 390, 25),
                 lineAt("Tel: +44 20 7946 0318", 700, 300, 25), lineAt("Mob: 07700 900462", 700, 340, 25),
                 lineAt("Fax: +44 20 7946 0319", 700, 380, 25), lineAt("jane.doe@acme-tools.example", 700, 420, 25),
                 lineAt("www.acme-tools.example", 700, 460, 25), lineAt("@janedoe", 700, 500, 25),
                 lineAt("Skype: jane.doe", 700, 540, 25)}),
        (Fields{{FieldType::Name, "Jane Doe"},
                {FieldType::Email, "jane.doe@acme-tools.example"},
                {FieldType::Phone, "+44 20 7946 0318"},
                {FieldType::Title, "Sales Manager"},
                {FieldType::Company, "Acme Tools Ltd"},
                {FieldType::Department, "Human Resources"},
                {FieldType::URL, "www.acme-tools.example"},
                {FieldType::Address, "12 High Street, London SE1 9ZZ"},
                {FieldType::Fax, "+44 20 7946 0319"},
                {FieldType::Mobile, "07700 900462"},
                {FieldType::Twitter, "@janedoe"},
                {FieldType::Skype, "jane.doe"}}));
}

TEST(FieldDecisionTest, NeverFindsTwoNames) {
    const auto fields = decided(
        {lineAt("Jane Doe", 100, 50, 40), lineAt("John Smith", 100, 150, 40), lineAt("Mary Miller", 100, 250, 40)});
    EXPECT_EQ(fields.count(FieldType::Name), 1U);
}

TEST(FieldDecisionTest, TakesTheNameThatTheAddressIsMadeOf) {
    const auto fields = decided({lineAt("Martin Miller", 100, 50, 40), lineAt("Jane Doe", 100, 250, 30),
                                 lineAt("jane.doe@martinmiller.example", 100, 350, 25)});
    EXPECT_EQ(fields.find(FieldType::Name)->second, "Jane Doe");
    EXPECT_EQ(fields.find(FieldType::Company)->second, "Martin Miller");
}

TEST(FieldDecisionTest, JoinsAFirmsLines) {
    const auto fields = decided({lineAt("GLOBAL", 800, 300, 70), lineAt("INSURANCE", 780, 400, 70),
                                 lineAt("Amit Kumar", 100, 50, 40), lineAt("hello@global.com", 100, 300, 25)});
    EXPECT_EQ(fields.find(FieldType::Company)->second, "GLOBAL INSURANCE");
}

TEST(FieldDecisionTest, FindsLabelsToTheLeftAndAbove) {
    EXPECT_EQ(decided({lineAt("Fax", 100, 100, 25), lineAt("312-555-0142", 300, 100, 25)}),
              (Fields{{FieldType::Fax, "312-555-0142"}}));
    EXPECT_EQ(decided({lineAt("Mobile", 100, 100, 25), lineAt("312-555-0142", 100, 140, 25)}),
              (Fields{{FieldType::Mobile, "312-555-0142"}}));
}

TEST(FieldDecisionTest, FindsAHandlesLabelInItsOwnColumn) {
    EXPECT_EQ(decided({lineAt("Skype", 100, 100, 25), lineAt("jane.doe", 300, 100, 25)}),
              (Fields{{FieldType::Skype, "jane.doe"}}));
    EXPECT_EQ(decided({lineAt("Skype", 100, 100, 25), lineAt("jane.doe", 1300, 300, 25)}).count(FieldType::Skype), 0U);
}

TEST(FieldDecisionTest, GivesALostLabelOfAColumnBackToTheFax) {
    const std::vector<TextLine> card = {lineAt("T", 100, 100, 25), lineAt("+33 1 99 00 84 89", 300, 100, 25),
                                        lineAt("+33 1 99 00 09 74", 300, 150, 25)};
    EXPECT_EQ(decided(card), (Fields{{FieldType::Phone, "+33 1 99 00 84 89"}, {FieldType::Fax, "+33 1 99 00 09 74"}}));
}

TEST(FieldDecisionTest, LeavesASecondNumberWithoutALabelColumn) {
    const auto fields =
        decided({lineAt("Tel. 020 7946 0018", 100, 100, 25), lineAt("020 7946 0725", 100, 150, 25)}, "en");
    EXPECT_EQ(fields.count(FieldType::Phone), 2U);
    const auto three = decided({lineAt("T", 100, 100, 25), lineAt("020 7946 0018", 300, 100, 25),
                                lineAt("020 7946 0725", 300, 150, 25), lineAt("F", 100, 200, 25),
                                lineAt("020 7946 0726", 300, 200, 25)});
    EXPECT_EQ(three.count(FieldType::Phone), 2U);
    EXPECT_EQ(three.find(FieldType::Fax)->second, "020 7946 0726");
}

TEST(FieldDecisionTest, PartsAFirmFromThePersonBesideIt) {
    EXPECT_EQ(decided({lineAt("Fjallroding Livs HB Jane Doe", 100, 100, 30)}),
              (Fields{{FieldType::Company, "Fjallroding Livs HB"}, {FieldType::Name, "Jane Doe"}}));
    EXPECT_EQ(decided({lineAt("Kurz GmbH & Co. KG", 100, 100, 30)}),
              (Fields{{FieldType::Company, "Kurz GmbH & Co. KG"}}));
}

TEST(FieldDecisionTest, TakesNothingFromAPageOfProse) {
    std::vector<TextLine> page;
    for (int i = 0; i < 24; ++i)
        page.push_back(lineAt("nur où le chemin tourne vers les champs puis se perd sous les feuilles de la rue 12", 50,
                              50.F + 40.F * static_cast<float>(i), 25));
    page.push_back(lineAt("Abend", 50, 1100, 25));
    EXPECT_TRUE(decided(page, "fr").empty());
    page.push_back(lineAt("jane@acme.com", 50, 1200, 25));
    EXPECT_EQ(decided(page, "fr"), (Fields{{FieldType::Email, "jane@acme.com"}}));
}

TEST(FieldDecisionTest, TakesNothingFromTextures) {
    for (const char* junk : {"1194 AL", "yır N", "SSS SS SE", "zum", "us, an", "où le chemin tourne"})
        EXPECT_TRUE(decided({lineAt(junk, 100, 100, 40, 78)}).empty()) << junk;
}

TEST(FieldDecisionTest, KeepsACardOfFewWords) {
    EXPECT_EQ(decided({lineAt("Xq Ylvan", 100, 100, 40, 92), lineAt("QUIPU", 100, 300, 60, 92)}),
              (Fields{{FieldType::Name, "Xq Ylvan"}, {FieldType::Company, "QUIPU"}}));
    EXPECT_EQ(decided({lineAt("QUIPU", 100, 300, 60, 92)}), (Fields{{FieldType::Company, "QUIPU"}}));
    EXPECT_EQ(decided({lineAt("Jane Doe", 100, 100, 40, 80)}), (Fields{{FieldType::Name, "Jane Doe"}}));
}

TEST(FieldDecisionTest, JoinsAddressLinesOfEqualHeight) {
    auto lower = lineAt("110 00 Praha", 100, 140, 30);
    lower.size = 15;
    EXPECT_EQ(decided({lineAt("Mlýnská 19", 100, 100, 30), lower}, "cs"),
              (Fields{{FieldType::Address, "Mlýnská 19, 110 00 Praha"}}));
}

TEST(FieldDecisionTest, JoinsPartsOfAnAddressLine) {
    EXPECT_EQ(decided({lineAt("12 High Street", 100, 100, 25), lineAt("CHESTNUT HILL,", 100, 140, 25),
                       lineAt("MASSACHUSETTS 02467", 400, 136, 25)}),
              (Fields{{FieldType::Address, "12 High Street, CHESTNUT HILL, MASSACHUSETTS 02467"}}));
}

TEST(FieldDecisionTest, LetsTwoReadingsAgree) {
    auto email = lineAt("jane@psdgraphics.com", 100, 100, 25);
    auto link = lineAt("www.psdegraphics.com", 100, 150, 25);
    link.words[0].others = {"www.psdgraphics.com"};
    const auto fields = decided({email, link});
    EXPECT_EQ(fields.find(FieldType::URL)->second, "www.psdgraphics.com");
}

TEST(FieldDecisionTest, GivesBackALostDotThatTheNameExplains) {
    auto email = lineAt("jamessmith@spc.com", 100, 300, 25);
    email.words[0].others = {"james.smith@spc.com"};
    const auto fields = decided({lineAt("JAMES SMITH", 100, 100, 40), email});
    EXPECT_EQ(fields.find(FieldType::Email)->second, "james.smith@spc.com");
}

TEST(FieldDecisionTest, DropsWhatIsCutFromAnotherHost) {
    const auto fields = decided({lineAt("jane@martindale.com", 100, 100, 25), lineAt("ale.com", 100, 300, 25)});
    EXPECT_EQ(fields, (Fields{{FieldType::Email, "jane@martindale.com"}}));
    const auto kept = decided({lineAt("jane@mail.acme.com", 100, 100, 25), lineAt("acme.com", 100, 300, 25)});
    EXPECT_EQ(kept.count(FieldType::URL), 1U);
}

TEST(FieldDecisionTest, SnapsLettersThatPrintAlikeToTheName) {
    const auto email = [](const std::string& name, const std::string& printed) {
        return decided({lineAt(name, 100, 100, 40), lineAt(printed, 100, 300, 25)}).find(FieldType::Email)->second;
    };
    EXPECT_EQ(email("Lucas McAldane", "Imcaldane@acme.com"), "lmcaldane@acme.com");
    EXPECT_EQ(email("Paul Olsen", "paul.0lsen@acme.com"), "paul.olsen@acme.com");
    EXPECT_EQ(email("Lucas McAldane", "info@acme.com"), "info@acme.com");
    EXPECT_EQ(email("Emma Meyer", "cmeyer@acme.com"), "cmeyer@acme.com");
    EXPECT_EQ(email("Jan Ito", "jlt@acme.com"), "jlt@acme.com");
}

TEST(FieldDecisionTest, KeepsAnUnusualLocalPart) {
    const auto fields = decided({lineAt("James Smith", 100, 100, 40), lineAt("jamessmiht@spc.com", 100, 300, 25)});
    EXPECT_EQ(fields.find(FieldType::Email)->second, "jamessmiht@spc.com");
}

TEST(FieldDecisionTest, DropsWhatIconsLeave) {
    auto line = lineAt("9 TamilNadu 600115", 100, 140, 35);
    line.words[0].box.h = 90;
    const auto fields = decided({lineAt("123 Global St., Erode,", 130, 100, 35), line});
    EXPECT_EQ(fields.find(FieldType::Address)->second, "123 Global St., Erode, TamilNadu 600115");
}

TEST(FieldDecisionTest, TakesNothingFromNoise) {
    EXPECT_TRUE(decided({}).empty());
    EXPECT_TRUE(decided({lineAt("|| ~ —", 100, 100), lineAt("=}", 100, 200), lineAt("x", 100, 300)}).empty());
    EXPECT_TRUE(decided({lineAt("gjkw ptz", 100, 100, 30, 15)}).empty());
}

TEST(FieldDecisionTest, SurvivesLongLines) {
    std::string digits(5000, '7');
    std::string words;
    for (int i = 0; i < 2000; ++i)
        words += "a@b. +1 (";
    decided({lineOf(digits), lineOf(words), lineOf(std::string(5000, '@')), lineOf(std::string(5000, '.'))});
}

}  // namespace
}  // namespace qv::recognition
