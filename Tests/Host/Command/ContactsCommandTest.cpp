#include "Host/People/CardsFixture.h"
#include "Support/HostProgram.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>

namespace {

namespace fs = std::filesystem;
using nlohmann::ordered_json;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testsupport::hostCall;
using testsupport::ProcessCall;
using testsupport::ProcessResult;
using testsupport::runProcess;

/// `contacts` over a folder of vCards.
class ContactsCommand : public testsupport::CardsFixture {
  protected:
    ContactsCommand() {
        addPerson("u-ada", "Ada Example", "ada@example.com", "\xC3\x84pfel Ltd");
        addPerson("u-bo", "Bo Sample", "bo@example.com");
    }
    static ProcessResult contacts(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "contacts");
        return runProcess(hostCall(std::move(arguments)));
    }
    ProcessResult inCards(std::vector<std::string> arguments) const {
        arguments.insert(arguments.end(), {"--address-book", cards()});
        return contacts(std::move(arguments));
    }
};

TEST_F(ContactsCommand, ListsThemAll) {
    const auto result = inCards({"list"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, IsEmpty());
    EXPECT_EQ(result.output,
              "Name         Company    Email            Phone  UID\n"
              "Ada Example  \xC3\x84pfel Ltd  ada@example.com  -      u-ada\n"
              "Bo Sample    -          bo@example.com   -      u-bo\n");
}

TEST_F(ContactsCommand, ListsThemAsJSON) {
    const auto result = inCards({"list", "--json"});
    EXPECT_EQ(result.status, 0);
    const ordered_json list = ordered_json::parse(result.output);
    ASSERT_EQ(list.size(), 2U);
    const ordered_json expected = {
        {"uid", "u-ada"},
        {"fullName", "Ada Example"},
        {"jobTitle", nullptr},
        {"company", "\xC3\x84pfel Ltd"},
        {"emailFields", ordered_json::array({{{"label", nullptr}, {"text", "ada@example.com"}}})},
        {"phoneFields", ordered_json::array()},
        {"twitterHandles", ordered_json::array()},
        {"addresses", ordered_json::array()},
        {"linkedInProfileURL", nullptr},
        {"facebookProfileURL", nullptr},
        {"picture", nullptr},
    };
    EXPECT_EQ(list[0].dump(1), expected.dump(1));
}

TEST_F(ContactsCommand, ShowsOne) {
    for (const char* name : {"u-ada", "u-a", "ADA@example.com", "ada example"}) {
        const auto result = inCards({"show", name});
        EXPECT_EQ(result.status, 0) << name;
        EXPECT_EQ(result.output,
                  "Name     Ada Example\n"
                  "Company  \xC3\x84pfel Ltd\n"
                  "Email    ada@example.com\n"
                  "UID      u-ada\n")
            << name;
    }
    EXPECT_EQ(ordered_json::parse(inCards({"show", "u-bo", "--json"}).output)["fullName"], "Bo Sample");
}

TEST_F(ContactsCommand, ShowsNoneWhenItIsNotClearWhich) {
    const auto several = inCards({"show", "u-"});
    EXPECT_EQ(several.status, 1);
    EXPECT_THAT(several.output, IsEmpty());
    EXPECT_THAT(several.error, AllOf(HasSubstr("Several contacts"), HasSubstr("u-ada"), HasSubstr("u-bo")));
    const auto nobody = inCards({"show", "Cy", "--json"});
    EXPECT_EQ(nobody.status, 1);
    EXPECT_THAT(nobody.output, IsEmpty());
    EXPECT_THAT(nobody.error, HasSubstr("There is no contact \"Cy\""));
}

TEST_F(ContactsCommand, FindsText) {
    const auto result = inCards({"find", "\xC3\xA4PFEL"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, AllOf(HasSubstr("Ada Example"), Not(HasSubstr("Bo Sample"))));
    const auto nobody = inCards({"find", "zzz"});
    EXPECT_EQ(nobody.status, 1);
    EXPECT_THAT(nobody.output, IsEmpty());
    EXPECT_THAT(nobody.error, HasSubstr("There is no contact with \"zzz\""));
    const auto asJSON = inCards({"find", "zzz", "--json"});
    EXPECT_EQ(asJSON.status, 1);
    EXPECT_EQ(asJSON.output, "[]\n");
}

TEST_F(ContactsCommand, TellsOfBrokenCardsBesideTheOthers) {
    mFolder.write("cards/broken.vcf", "BEGIN:VCARD\nFN:Half");
    const auto result = inCards({"list"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output, HasSubstr("Bo Sample"));
    EXPECT_THAT(result.error, HasSubstr("broken.vcf"));
    EXPECT_EQ(inCards({"show", "u-bo"}).status, 1);
}

TEST_F(ContactsCommand, HostileCardsCannotActOnTheTerminal) {
    addPerson("\x1b[31m", "Red \x1b[31m", "x@example.com");
    for (const char* action : {"list", "find"}) {
        const auto result = inCards(std::string(action) == "list" ? std::vector<std::string>{"list"}
                                                                  : std::vector<std::string>{"find", "Red"});
        EXPECT_THAT(result.output, Not(HasSubstr("\x1b"))) << action;
        EXPECT_THAT(result.output, HasSubstr("Red \\x1b[31m")) << action;
    }
}

TEST_F(ContactsCommand, TheUsersOwnAddressBookMayBeEmpty) {
    ProcessCall call = hostCall({"contacts", "list"});
    call.environment["XDG_DATA_HOME"] = (mFolder / "data").string();
    const auto none = runProcess(call);
    EXPECT_EQ(none.status, 0);
    EXPECT_THAT(none.output, IsEmpty());
    EXPECT_THAT(none.error,
                AllOf(HasSubstr((mFolder / "data/qvcardscan/contacts").string()), HasSubstr("There are no contacts")));
    EXPECT_FALSE(fs::exists(mFolder / "data"));
    call.arguments.emplace_back("--json");
    EXPECT_EQ(runProcess(call).output, "[]\n");
}

TEST_F(ContactsCommand, WrongCallsAreStatusTwo) {
    EXPECT_EQ(contacts({}).status, 2);
    EXPECT_EQ(inCards({"show"}).status, 2);
    EXPECT_EQ(inCards({"show", ""}).status, 2);
    EXPECT_EQ(inCards({"find", ""}).status, 2);
    EXPECT_EQ(inCards({"delete"}).status, 2);
    const auto missing = contacts({"list", "--address-book", (mFolder / "missing").string()});
    EXPECT_EQ(missing.status, 2);
    EXPECT_THAT(missing.error, HasSubstr((mFolder / "missing").string()));
    EXPECT_EQ(contacts({"list", "--address-book", (mFolder / "cards/u-bo.vcf").string()}).status, 2);
}

TEST_F(ContactsCommand, HelpShowsExamplesOfItsOwn) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--help"}, {"list", "--help"}, {"show", "--help"}, {"find", "--help"}}) {
        const auto result = contacts(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.output, AllOf(HasSubstr("qvcardscan contacts show"), HasSubstr("Exit status"),
                                         Not(HasSubstr("qvcardscan scan"))));
    }
}

TEST_F(ContactsCommand, AFullDiskIsStatusThree) {
    ProcessCall call = hostCall({"contacts", "list", "--address-book", cards()});
    call.outputFile = "/dev/full";
    EXPECT_EQ(runProcess(call).status, 3);
}

}  // namespace
