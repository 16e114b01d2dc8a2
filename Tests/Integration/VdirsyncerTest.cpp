#include "Integration/CardComparison.h"
#include "Integration/Contacts.h"
#include "Integration/Programs.h"
#include "Integration/RealServers.h"
#include "QVSocialSearch/QVVCardFolder.h"
#include "Support/ReadFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <any>
#include <iostream>
#include <map>
#include <string>
#include <vector>

namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using namespace integration;

using Statements = std::map<std::string, std::vector<std::string>>;

/// A folder of cards and a server that vdirsyncer keeps the same.
class VdirsyncerTest : public testing::Test {
  protected:
    VdirsyncerTest() {
        std::filesystem::create_directory(mHome / "cards");
        mHome.write("config", "[general]\nstatus_path = \"" + (mHome / "status").string() +
                                  "\"\n[pair p]\na = \"local\"\nb = \"remote\"\ncollections = null\n"
                                  "[storage local]\ntype = \"filesystem\"\nfileext = \".vcf\"\npath = \"" +
                                  (mHome / "cards").string() + "\"\n[storage remote]\ntype = \"carddav\"\nurl = \"" +
                                  mServer.collection() + "\"\nusername = \"" + kUser + "\"\npassword = \"" + kPassword +
                                  "\"\n");
        vdirsyncer({"discover", "p"});
    }

    std::string vdirsyncer(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"-c", (mHome / "config").string()});
        return outputOf("vdirsyncer", mHome.path(), std::move(arguments));
    }
    std::string sync() const { return vdirsyncer({"sync"}); }

    Statements inFolder() const {
        Statements cards;
        for (const auto& entry : std::filesystem::directory_iterator(mHome / "cards")) {
            if (entry.path().extension() == ".vcf")
                cards[entry.path().stem().string()] = statementsOf(testsupport::readFile(entry.path()));
        }
        return cards;
    }
    Statements onServer(const Statements& likeThese) const {
        Statements cards;
        for (const auto& [name, statements] : likeThese) {
            const auto answer = mServer.send("GET", mServer.collection() + name + ".vcf");
            EXPECT_EQ(answer.status, 200) << name;
            cards[name] = statementsOf(testsupport::bodyOf(answer));
        }
        return cards;
    }
    void expectTheSame(std::size_t count) const {
        const Statements here = inFolder();
        EXPECT_THAT(here, SizeIs(count));
        EXPECT_EQ(here, onServer(here));
        EXPECT_THAT(mServer.addressBook()->profiles(nullptr), SizeIs(count));
    }

    testsupport::TemporaryFolder mHome;
    Radicale mServer;
    QVVCardFolder mFolder{mHome / "cards"};
    std::unique_ptr<QVCardDAVAddressBook> mBook = mServer.addressBook();
};

TEST_F(VdirsyncerTest, ARoundTripEndsWithoutADifference) {
    const auto people = contacts();
    for (const auto& profile : people)
        ASSERT_FALSE(mFolder.saveProfile(*profile).error);
    const Statements before = inFolder();
    const std::string first = sync();
    expectTheSame(people.size());
    EXPECT_EQ(inFolder(), before);

    // One is new on the server, one changes there, one changes here, at once.
    ASSERT_FALSE(mBook->saveProfile(*person("from-server", "Sara Server")).error);
    auto changedThere = person("complete", "Dr. Zoë Müller-Lüdenscheidt");
    changedThere->mergeWithEmailSet(social::emails({{"Dort", "there@example.com"}}));
    ASSERT_EQ(mBook->saveProfile(*changedThere).outcome, QVAddressBookSaveOutcome::Updated);
    auto changedHere = person("linked", "Lin Links");
    changedHere->mergeWithEmailSet(social::emails({{"Hier", "here@example.com"}}));
    ASSERT_EQ(mFolder.saveProfile(*changedHere).outcome, QVAddressBookSaveOutcome::Updated);
    const std::string second = sync();
    expectTheSame(people.size() + 1);
    EXPECT_THAT(inFolder()["complete"], Contains(HasSubstr("there@example.com")));
    EXPECT_THAT(inFolder()["linked"], Contains(HasSubstr("here@example.com")));

    const std::string third = sync();
    EXPECT_THAT(third, Not(HasSubstr("Copying")));
    std::cout << first << second << third;
}

TEST_F(VdirsyncerTest, WhatItBringsIsUpdatedInPlace) {
    ASSERT_FALSE(mBook->saveProfile(*complete()).error);
    sync();
    const auto found = mFolder.profilesWithEmailAddress("complete@example.com", nullptr);
    ASSERT_THAT(found, SizeIs(1));
    found.front()->setJobTitle("Direktorin");
    EXPECT_EQ(mFolder.saveProfile(*found.front()).outcome, QVAddressBookSaveOutcome::Updated);
    sync();
    expectTheSame(1);
    const auto there = mBook->profileWithUID("complete", nullptr);
    ASSERT_TRUE(there);
    EXPECT_EQ(there->jobTitle(), "Direktorin");
}

}  // namespace
