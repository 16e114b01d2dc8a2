#include "Host/Command/ScanFixture.h"
#include "Host/People/ScannedCard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <thread>

namespace {

namespace fs = std::filesystem;
using nlohmann::ordered_json;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testsupport::ProcessResult;
using testsupport::readFile;
using testsupport::recognitionOfAda;
using testsupport::runProcess;
using testsupport::ScriptedServer;

// 1 x 1, white.
constexpr const char* kPicture =
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAIAAACQd1PeAAAADElEQVR4nGP4//8/AAX+Av4N70a4AAAAAElFTkSuQmCC";

/// What `scan` does with the person on the card: search, save, merge with contacts.
class ScanPerson : public testsupport::ScanFixture {
  protected:
    void recognise(const std::string& recognition) { mServer.respond(ScriptedServer::answer(200, recognition)); }
    ProcessResult scanInto(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), mFront);
        arguments.insert(arguments.end(), {"--address-book", book()});
        return scan(std::move(arguments));
    }
    std::string book() const { return (mFolder / "book").string(); }
    void addContact(const std::string& UID, const std::string& lines) const {
        mFolder.write("book/" + UID + ".vcf",
                      "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:" + UID + "\r\n" + lines + "END:VCARD\r\n");
    }
    std::vector<fs::path> contacts() const { return {fs::directory_iterator(book()), fs::directory_iterator()}; }
};

TEST_F(ScanPerson, TheSecondScanUpdatesWhatTheFirstSaved) {
    recognise(recognitionOfAda());
    const auto first = scanInto({"--save"});
    EXPECT_EQ(first.status, 0) << first.error;
    ASSERT_EQ(contacts().size(), 1U);
    const std::string file = contacts().front().string();
    EXPECT_THAT(first.output, HasSubstr("\nContact: created in " + file + "\n"));
    EXPECT_THAT(readFile(file), AllOf(HasSubstr("FN:Ada Example\r\n"), HasSubstr("TITLE:Engineer\r\n"),
                                      HasSubstr("1 Main Street"), HasSubstr("+1 202 555 0142")));
    const auto second = scanInto({"--save"});
    EXPECT_EQ(second.status, 0);
    EXPECT_THAT(second.output,
                HasSubstr("Contact: updated \"Ada Example\" (the same e-mail address) in " + file + "\n"));
    EXPECT_EQ(contacts().size(), 1U);
    EXPECT_THAT(first.error + second.error, IsEmpty());
}

TEST_F(ScanPerson, SeveralAtOnceMakeOneContact) {
    recognise(recognitionOfAda());
    std::vector<ProcessResult> results(4);
    std::vector<std::thread> programs;
    for (ProcessResult& result : results)
        programs.emplace_back([this, &result] { result = scanInto({"--save"}); });
    for (std::thread& program : programs)
        program.join();
    int created = 0;
    for (const ProcessResult& result : results) {
        EXPECT_EQ(result.status, 0) << result.error;
        created += result.output.find("Contact: created") != std::string::npos ? 1 : 0;
    }
    EXPECT_EQ(created, 1);
    EXPECT_EQ(contacts().size(), 1U);
}

TEST_F(ScanPerson, TheContactThatIsFoundCompletesTableFilesAndNote) {
    recognise(recognitionOfAda());
    addContact("ada", std::string("FN:Ada Lovelace\r\nN:Lovelace;Ada;;;\r\nORG:Analytical Engines\r\n"
                                  "EMAIL:ada@example.com\r\nEMAIL:home@example.com\r\n"
                                  "X-SOCIALPROFILE;TYPE=linkedin:https://www.linkedin.com/in/ada\r\n"
                                  "PHOTO;ENCODING=b;TYPE=PNG:") +
                          kPicture + "\r\n");
    const fs::path out = mFolder / "out";
    const auto result = scanInto({"--search", "-o", out.string()});
    ASSERT_EQ(result.status, 0) << result.error;
    EXPECT_THAT(result.output, HasSubstr("Search: found \"Ada Lovelace\" in the address book, with a LinkedIn page; on "
                                         "the card: \"Ada Example\"\n"));
    EXPECT_THAT(result.output, HasSubstr("Company   Analytical Engines\n"));
    EXPECT_THAT(result.output, HasSubstr("Picture   1 x 1 pixels\n"));
    const ordered_json contact = ordered_json::parse(readFile(out / "contact.json"));
    EXPECT_EQ(contact["fullName"], "Ada Lovelace");
    EXPECT_EQ(contact["company"], "Analytical Engines");
    EXPECT_EQ(contact["linkedInProfileURL"], "https://www.linkedin.com/in/ada");
    EXPECT_EQ(contact["emailFields"].size(), 2U);
    const std::string note = readFile(out / "note.qvml");
    EXPECT_THAT(note, AllOf(HasSubstr("Ada Lovelace"), HasSubstr("Analytical Engines"), HasSubstr("home@example.com")));
    const std::string hash = contact["avatar"];
    EXPECT_THAT(note, HasSubstr(hash));
    EXPECT_EQ(md5Of(readFile(out / "resources" / (hash + ".jpg"))), hash) << "the new picture is there";
    EXPECT_THAT(readFile(out / "note.html"), AllOf(HasSubstr("<title>Ada Lovelace</title>"),
                                                   HasSubstr("Analytical Engines"), HasSubstr("linkedin.com/in/ada")));
    EXPECT_EQ(contacts().size(), 1U) << "nothing is saved that nobody asked for";
}

TEST_F(ScanPerson, AColleagueWithTheSameAddressStaysSomebodyElse) {
    recognise(recognitionOfAda("office@example.com"));
    addContact("bo", "FN:Bo Sample\r\nN:Sample;Bo;;;\r\nTITLE:Director\r\nEMAIL:office@example.com\r\n");
    const std::string before = readFile(mFolder / "book/bo.vcf");
    const auto result = scanInto({"--search", "--save", "--contacts", book()});
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_THAT(result.output, AllOf(HasSubstr("Name     Ada Example  "), HasSubstr("Search: nobody was found\n"),
                                     HasSubstr("Contact: created in "), Not(HasSubstr("Director"))));
    EXPECT_THAT(result.output + result.error,
                HasSubstr("has an e-mail address of the card, but another name: they are not merged."));
    EXPECT_EQ(contacts().size(), 2U);
    EXPECT_EQ(readFile(mFolder / "book/bo.vcf"), before);
    const auto again = scanInto({"--search", "--save"});
    EXPECT_THAT(again.output, AllOf(HasSubstr("Search: found \"Ada Example\" in the address book"),
                                    HasSubstr("Contact: updated \"Ada Example\"")));
    EXPECT_EQ(contacts().size(), 2U);
}

TEST_F(ScanPerson, JSONTellsWhatCameOfIt) {
    recognise(recognitionOfAda());
    addContact("ada", "FN:Ada Lovelace\r\nN:Lovelace;Ada;;;\r\nEMAIL:ada@example.com\r\n");
    const auto result = scanInto({"--search", "--save", "--contacts", book(), "--json"});
    ASSERT_EQ(result.status, 0) << result.error;
    const ordered_json object = ordered_json::parse(result.output);
    std::vector<std::string> keys;
    for (const auto& item : object.items())
        keys.push_back(item.key());
    EXPECT_THAT(keys,
                testing::ElementsAre("noteUUID", "errors", "rotation", "card", "contact", "merged", "search", "saved"));
    EXPECT_EQ(object["contact"]["fullName"], "Ada Lovelace");
    EXPECT_EQ(object["merged"]["uid"], "ada");
    EXPECT_EQ(
        object["search"],
        ordered_json({{"outcome", "found"}, {"resultType", 0}, {"name", "Ada Lovelace"}, {"inAddressBook", true}}));
    EXPECT_EQ(object["saved"], ordered_json({{"outcome", "updated"},
                                             {"uid", "ada"},
                                             {"where", (fs::path(book()) / "ada.vcf").string()},
                                             {"error", nullptr}}));
}

TEST_F(ScanPerson, ACardWithoutAddressIsNotSearchedFor) {
    recognise(recognitionOfAda(""));
    fs::create_directory(book());
    const auto result = scanInto({"--search"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("Search: skipped, because the card has no e-mail address to search by\n"));
}

TEST_F(ScanPerson, NobodyFoundIsNoFailure) {
    recognise(recognitionOfAda());
    fs::create_directory(book());
    const auto result = scanInto({"--search"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("Search: nobody was found\n"));
}

TEST_F(ScanPerson, TheUsersOwnAddressBookIsUsedAndNamed) {
    recognise(recognitionOfAda());
    const fs::path own = mFolder / "data/qvcardscan/contacts";
    const auto search = scan({mFront, "--search"});
    EXPECT_EQ(search.status, 0) << search.error;
    EXPECT_THAT(search.error, HasSubstr("The address book is the folder \"" + own.string() + "\""));
    EXPECT_FALSE(fs::exists(own)) << "a search makes no address book";
    const auto save = scan({mFront, "--save", "--json"});
    EXPECT_EQ(save.status, 0) << save.error;
    EXPECT_THAT(save.error, HasSubstr(own.string()));
    EXPECT_EQ(fs::path(ordered_json::parse(save.output)["saved"]["where"]).parent_path(), own);
    auto homeless = call({mFront, "--save"});
    homeless.environment["XDG_DATA_HOME"] = "relative/folders/do/not/count";
    homeless.environment["HOME"] = std::nullopt;
    const auto nowhere = runProcess(homeless);
    EXPECT_EQ(nowhere.status, 2);
    EXPECT_THAT(nowhere.error, HasSubstr("--address-book"));
    homeless.environment["HOME"] = (mFolder / "home").string();
    EXPECT_THAT(runProcess(homeless).output, HasSubstr((mFolder / "home/.local/share/qvcardscan/contacts").string()));
}

TEST_F(ScanPerson, ContactsAreMergedAndNamed) {
    recognise(recognitionOfAda("", "Example Ltd"));
    addContact("ada", "FN:Ada Example\r\nN:Example;Ada;;;\r\nORG:Example Ltd\r\nEMAIL:ada@example.com\r\n");
    const fs::path out = mFolder / "out";
    const auto result = scan({mFront, "--contacts", book(), "-o", out.string()});
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_THAT(result.output, HasSubstr("Merged: with \"Ada Example\" (the same name and company), " + book()));
    EXPECT_THAT(readFile(out / "note.html"), HasSubstr("ada@example.com"));
}

TEST_F(ScanPerson, ContactsAreAlsoWhereItIsSaved) {
    recognise(recognitionOfAda());
    fs::create_directory(book());
    const auto result = scan({mFront, "--contacts", book(), "--save"});
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_THAT(result.output,
                AllOf(HasSubstr("Merged: with none of the contacts\n"), HasSubstr("created in " + book())));
}

TEST_F(ScanPerson, NamesakesAreNotMergedInSilence) {
    recognise(recognitionOfAda("", "Example Ltd"));
    addContact("other", "FN:Ada Example\r\nN:Example;Ada;;;\r\nORG:Other Ltd\r\n");
    const auto result = scanInto({"--save"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, HasSubstr("not the same company: they are not merged"));
    EXPECT_THAT(result.output, HasSubstr("Contact: created in "));
    EXPECT_EQ(contacts().size(), 2U);
}

TEST_F(ScanPerson, AContactThatCannotBeToldIsNotSaved) {
    recognise(recognitionOfAda());
    for (const char* UID : {"one", "two"})
        addContact(UID, "FN:Ada Example\r\nN:Example;Ada;;;\r\nEMAIL:ada@example.com\r\n");
    const auto result = scanInto({"--save"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.output, AllOf(HasSubstr("Name     Ada Example"), HasSubstr("Contact: not saved\n")));
    EXPECT_THAT(result.error, HasSubstr("The contact was not saved: Which contact in"));
}

TEST_F(ScanPerson, NobodyIsSavedWhenNothingWasRead) {
    recognise("<other/>");
    const auto result = scanInto({"--search", "--save", "--json"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error, HasSubstr("Nobody was searched for or saved"));
    EXPECT_TRUE(ordered_json::parse(result.output)["saved"].is_null());
    EXPECT_THAT(contacts(), IsEmpty());
}

TEST_F(ScanPerson, WrongCallsAreFoundOutBeforeAnythingIsSent) {
    const std::string file = mFolder.write("file", "x").string();
    const struct {
        std::vector<std::string> arguments;
        int status;
        const char* why;
    } rows[] = {
        {{"--address-book", book()}, 2, "--search or --save"},
        {{"--search", "--address-book", book()}, 2, "cannot be used"},
        {{"--save", "--address-book", file}, 3, "cannot be used"},
        {{"--search", "--address-book", file}, 2, "cannot be used"},
        {{"--contacts", book()}, 2, "a folder of vCards is needed"},
        {{"--save", "--skip-note"}, 2, "--skip-note"},
        {{"--search-key-file", file}, 2, "--search"},
        {{"--search", "--search-key-file", file}, 2, "holds 1 line"},
        {{"--profile-service"}, 2, "--search"},
        {{"--webfinger"}, 2, "--search"},
        {{"--save", "--carddav", "http://127.0.0.1:1/", "--address-book", book()}, 2, "--address-book"},
        {{"--save", "--carddav", "dav.example.com"}, 2, "an address such as https://"},
        {{"--carddav", "http://127.0.0.1:1/"}, 2, "--search or --save"},
        {{"--carddav-login-file", file}, 2, "--carddav"},
        {{"--save", "--carddav", "http://127.0.0.1:1/", "--carddav-login-file", file}, 2, "holds 1 line"},
    };
    for (const auto& row : rows) {
        std::vector<std::string> arguments{mFront};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        const auto result = scan(arguments);
        EXPECT_EQ(result.status, row.status) << testing::PrintToString(row.arguments);
        EXPECT_THAT(result.error, HasSubstr(row.why)) << testing::PrintToString(row.arguments);
    }
    EXPECT_EQ(mServer.connectionCount(), 0U);
}

TEST_F(ScanPerson, AsksTheProfileServiceOnlyWhenTold) {
    recognise(recognitionOfAda());
    ScriptedServer service;
    service.respond(ScriptedServer::answer(200, R"({"display_name":"Ada","company":"Example Ltd",
        "verified_accounts":[{"service_type":"linkedin","service_label":"LinkedIn",
                              "url":"https://www.linkedin.com/in/ada"}]})"));
    fs::create_directory(book());
    ASSERT_EQ(scanInto({"--search"}).status, 0);
    EXPECT_EQ(service.connectionCount(), 0U);
    const auto key = mFolder.write("key", "my-service-key\n");
    const auto result = scanInto({"--search", "--profile-service", "--profile-service-key-file", key.string(),
                                  "--profile-service-url", service.url(""), "--verbose"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("with a LinkedIn page"));
    EXPECT_THAT(result.output, HasSubstr("Example Ltd"));
    ASSERT_EQ(service.requests().size(), 1U);
    EXPECT_THAT(service.requests()[0].target, testing::StartsWith("/v3/profiles/"));
    EXPECT_EQ(service.requests()[0].header("authorization"), "Bearer my-service-key");
    EXPECT_THAT(result.output + result.error, Not(HasSubstr("my-service-key")));
}

TEST_F(ScanPerson, AsksTheAddresssDomainOnlyWhenTold) {
    recognise(recognitionOfAda());
    ScriptedServer domain;
    domain.respond(ScriptedServer::answer(200, R"({"subject":"acct:ada@example.com","links":[
        {"rel":"http://webfinger.net/rel/profile-page","href":"https://www.linkedin.com/in/ada"}]})",
                                          "Content-Type: application/jrd+json\r\n"));
    fs::create_directory(book());
    ASSERT_EQ(scanInto({"--search"}).status, 0);
    EXPECT_EQ(domain.connectionCount(), 0U);
    const auto result = scanInto({"--search", "--webfinger", "--webfinger-url", domain.url("")});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("with a LinkedIn page"));
    ASSERT_FALSE(domain.requests().empty());
    EXPECT_THAT(domain.requests()[0].target, testing::StartsWith("/.well-known/webfinger?resource="));
}

TEST_F(ScanPerson, TheSearchKeyIsShownNowhere) {
    recognise(recognitionOfAda());
    fs::create_directory(book());
    auto withKey = call({mFront, "--search", "--address-book", book(), "--verbose", "-o", (mFolder / "out").string()});
    withKey.environment["QVCARDSCAN_SEARCH_KEY"] = "k3y-for-tests";
    withKey.environment["QVCARDSCAN_SEARCH_SECRET"] = "s3arch-secret";
    const auto result = runProcess(withKey);
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, HasSubstr("<INFO> Social Search Response"));
    EXPECT_THAT(result.output + result.error, AllOf(Not(HasSubstr("k3y-for-tests")), Not(HasSubstr("s3arch-secret"))));
    withKey.environment["QVCARDSCAN_SEARCH_SECRET"] = std::nullopt;
    EXPECT_EQ(runProcess(withKey).status, 2) << "one of the two is a mistake";
}

}  // namespace
