#include "Integration/Contacts.h"
#include "Integration/Programs.h"
#include "QVSocialSearch/QVVCardFolder.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::SizeIs;
using namespace integration;

/// A folder of cards that khard looks at.
class KhardTest : public testing::Test {
  protected:
    KhardTest() {
        std::filesystem::create_directory(mHome / "cards");
        mHome.write("khard.conf", "[addressbooks]\n[[cards]]\npath = " + (mHome / "cards").string() +
                                      "\n[general]\ndefault_action = list\n[contact table]\nshow_uids = no\n");
    }

    std::string khard(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"-c", (mHome / "khard.conf").string()});
        return outputOf("khard", mHome.path(), std::move(arguments));
    }
    void save(const QVSocialProfile& profile) { EXPECT_FALSE(mFolder.saveProfile(profile).error); }

    testsupport::TemporaryFolder mHome;
    QVVCardFolder mFolder{mHome / "cards"};
};

TEST_F(KhardTest, ListsEveryContact) {
    const auto people = contacts();
    for (const auto& profile : people)
        save(*profile);
    const std::string list = khard({"list"});
    for (const char* name :
         {"Zoë Müller-Lüdenscheidt", "Lin Links", "Ada 👩‍💻 Example", "太郎 山田", "Lea Long", "Max Many"})
        EXPECT_THAT(list, HasSubstr(name));
    const std::string emails = khard({"email", "--parsable"});
    for (const auto& profile : people) {
        for (const auto& email : profile->emailAddresses())
            EXPECT_THAT(emails, HasSubstr(email->address() + "\t"));
    }
    std::cout << list;
}

TEST_F(KhardTest, ShowsAContactWithAllThatWasSaved) {
    save(*complete());
    const std::string shown = khard({"show", "zoe.mueller@example.com"});
    std::cout << shown;
    for (const char* text : {"Zoë", "Müller-Lüdenscheidt", "Title: Leiterin, Forschung & Entwicklung; Süd",
                             "Organisation: Müller, Söhne; & Co. \\ KG", "Büro Süd: zoe.mueller@example.com",
                             "zoë@example.org", "complete@example.com", "CELL: +49 (171) 555-0100", "+49 30 5550101",
                             "Durchwahl, 2. Stock: +49 30 5550102 ext. 7", "Große Straße 1, Hinterhaus", "10115 Berlin",
                             "Messe; Halle 3", "Messeplatz 2", "UID: complete"})
        EXPECT_THAT(shown, HasSubstr(text));
}

TEST_F(KhardTest, ReadsCardsThatItCopiesAsTheyAre) {
    save(*oddTexts());
    const std::string yaml = khard({"show", "--format", "yaml", "odd-texts@example.com"});
    for (const char* text : {"a:b;c,d\\e \"f\" g=h ^n %41 \\n", "030/555 01 03"})
        EXPECT_THAT(yaml, HasSubstr(text));
}

TEST_F(KhardTest, AnUpdateIsShown) {
    save(*complete());
    const auto found = mFolder.profilesWithEmailAddress("zoe.mueller@example.com", nullptr);
    ASSERT_THAT(found, SizeIs(1));
    found.front()->setJobTitle("Geschäftsführerin");
    found.front()->mergeWithEmailSet(social::emails({{"Neu", "zoe@neu.example"}}));
    save(*found.front());
    EXPECT_THAT(khard({"show", "zoe@neu.example"}),
                AllOf(HasSubstr("Title: Geschäftsführerin"), HasSubstr("Neu: zoe@neu.example"),
                      HasSubstr("Durchwahl, 2. Stock: +49 30 5550102 ext. 7")));
}

}  // namespace
