#include "QVSocialSearch/QVVCardFolder.h"
#include "SocialSearch/VCardFolderSupport.h"
#include "Support/ReadFile.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <any>
#include <string>
#include <utility>
#include <vector>

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;
using testing::SizeIs;
using testsupport::readFile;
using testsupport::TemporaryFolder;
using namespace vcardtest;

std::string descriptionOf(const std::optional<qv::Error>& error) {
    if (!error) return "";
    return std::any_cast<std::string>(error->userInfo.at(std::string(qv::kErrorDescriptionKey)));
}

std::string card(const std::string& UID, const std::string& lines) {
    return "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:" + UID + "\r\n" + lines + "END:VCARD\r\n";
}

class QVVCardFolderTest : public testing::Test {
  protected:
    TemporaryFolder mTemporary;
    std::filesystem::path mPath = mTemporary.path();
    QVVCardFolder mFolder{mPath};
};

TEST_F(QVVCardFolderTest, CreatesOneFilePerContact) {
    const QVAddressBookSaveResult result = mFolder.saveProfile(profileWithEmail("Ada Example", "ada@example.com"));
    ASSERT_FALSE(result.error) << descriptionOf(result.error);
    EXPECT_EQ(result.outcome, QVAddressBookSaveOutcome::Created);
    ASSERT_TRUE(result.UID);
    EXPECT_THAT(*result.UID, MatchesRegex("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}"));
    ASSERT_THAT(filesIn(mPath), ElementsAre(*result.UID + ".vcf"));
    EXPECT_EQ(readFile(mPath / (*result.UID + ".vcf")),
              card(*result.UID, "FN:Ada Example\r\nN:Example;Ada;;;\r\nEMAIL:ada@example.com\r\n"));
    EXPECT_EQ(mFolder.fileWithUID(*result.UID), mPath / (*result.UID + ".vcf"));
}

TEST_F(QVVCardFolderTest, MakesTheFolderButNotTheOneAbove) {
    QVVCardFolder below(mPath / "new");
    EXPECT_FALSE(below.saveProfile(profileWithEmail("Ada", "a@example.com")).error);
    EXPECT_THAT(filesIn(mPath / "new"), SizeIs(1));
    QVVCardFolder deep(mPath / "a" / "b");
    const auto error = deep.saveProfile(profileWithEmail("Ada", "a@example.com")).error;
    ASSERT_TRUE(error);
    EXPECT_EQ(error->domain, kQVAddressBookErrorDomain);
    EXPECT_EQ(error->code, QVAddressBookErrorUnwritable);
    EXPECT_FALSE(std::filesystem::exists(mPath / "a"));
}

TEST_F(QVVCardFolderTest, ReportsAFolderThatIsNotThere) {
    QVVCardFolder missing(mPath / "missing");
    std::optional<qv::Error> error;
    EXPECT_THAT(missing.profiles(&error), IsEmpty());
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, QVAddressBookErrorUnreadable);
    EXPECT_THAT(missing.profiles(nullptr), IsEmpty());
}

TEST_F(QVVCardFolderTest, UpdatesUnderTheFilesOwnName) {
    const std::string before = card("u-1", "FN:Ada\r\nN:;Ada;;;\r\nX-ODD;;A=:  \r\n");
    mTemporary.write("some name.vcf", before);
    ::chmod((mPath / "some name.vcf").c_str(), 0640);
    const auto profile = mFolder.profileWithUID("u-1", nullptr);
    ASSERT_TRUE(profile);
    addEmail(*profile, "ada@example.com");
    const QVAddressBookSaveResult result = mFolder.saveProfile(*profile);
    ASSERT_FALSE(result.error) << descriptionOf(result.error);
    EXPECT_EQ(result.outcome, QVAddressBookSaveOutcome::Updated);
    EXPECT_EQ(result.UID, "u-1");
    ASSERT_THAT(filesIn(mPath), ElementsAre("some name.vcf"));
    EXPECT_EQ(readFile(mPath / "some name.vcf"),
              card("u-1", "FN:Ada\r\nN:;Ada;;;\r\nX-ODD;;A=:  \r\nEMAIL:ada@example.com\r\n"));
    struct stat status {};
    ASSERT_EQ(::stat((mPath / "some name.vcf").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
}

TEST_F(QVVCardFolderTest, LeavesAFileThatSaysItAllUntouched) {
    const auto file = mTemporary.write("a.vcf", card("u", "FN:Ada\r\nN:;Ada;;;\r\n"));
    struct stat before {};
    ASSERT_EQ(::stat(file.c_str(), &before), 0);
    EXPECT_EQ(mFolder.saveProfile(*mFolder.profileWithUID("u", nullptr)).outcome, QVAddressBookSaveOutcome::Updated);
    struct stat after {};
    ASSERT_EQ(::stat(file.c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST_F(QVVCardFolderTest, MakesARecordThatIsGoneAnewUnderItsUID) {
    QVSocialProfile profile = profileWithEmail("Ada", "a@example.com");
    profile.setProfileType(QVSocialProfileSourceAddressBook);
    profile.setAddressBookUID("gone");
    const QVAddressBookSaveResult result = mFolder.saveProfile(profile);
    EXPECT_EQ(result.outcome, QVAddressBookSaveOutcome::Created);
    EXPECT_EQ(result.UID, "gone");
    EXPECT_THAT(filesIn(mPath), ElementsAre("gone.vcf"));
}

TEST_F(QVVCardFolderTest, UIDsCannotLeaveTheFolder) {
    for (const std::string UID : {"../evil", "/tmp/evil", ".hidden", "a/b", "Ä", "a\nb", "x y"}) {
        QVSocialProfile profile = profileWithEmail("Ada", "a@example.com");
        profile.setProfileType(QVSocialProfileSourceAddressBook);
        profile.setAddressBookUID(UID);
        EXPECT_EQ(mFolder.saveProfile(profile).UID, UID);
        EXPECT_TRUE(mFolder.profileWithUID(UID, nullptr)) << UID;
    }
    EXPECT_THAT(filesIn(mPath), SizeIs(7));
    EXPECT_FALSE(std::filesystem::exists(mPath.parent_path() / "evil.vcf"));
}

TEST_F(QVVCardFolderTest, ANameThatIsTakenByAnotherCardIsNotUsed) {
    mTemporary.write("gone.vcf", card("other", "FN:Other\r\n"));
    QVSocialProfile profile = profileWithEmail("Ada", "a@example.com");
    profile.setProfileType(QVSocialProfileSourceAddressBook);
    profile.setAddressBookUID("gone");
    EXPECT_EQ(mFolder.saveProfile(profile).outcome, QVAddressBookSaveOutcome::Created);
    EXPECT_EQ(readFile(mPath / "gone.vcf"), card("other", "FN:Other\r\n"));
    EXPECT_THAT(filesIn(mPath), SizeIs(2));
    EXPECT_TRUE(mFolder.profileWithUID("gone", nullptr));
}

TEST_F(QVVCardFolderTest, AUIDWithoutTheBitIsANewRecord) {
    mTemporary.write("u.vcf", card("u", "FN:Ada\r\n"));
    QVSocialProfile profile = profileWithEmail("Ada", "a@example.com");
    profile.setAddressBookUID("u");
    EXPECT_EQ(mFolder.saveProfile(profile).outcome, QVAddressBookSaveOutcome::Created);
    EXPECT_THAT(filesIn(mPath), SizeIs(2));
}

TEST_F(QVVCardFolderTest, AFileWithoutUIDGoesByItsName) {
    mTemporary.write("ada.vcf", "BEGIN:VCARD\nVERSION:4.0\nFN:Ada\nN:;Ada;;;\nEND:VCARD\n");
    const auto profile = mFolder.profileWithUID("ada", nullptr);
    ASSERT_TRUE(profile);
    addEmail(*profile, "a@example.com");
    EXPECT_EQ(mFolder.saveProfile(*profile).outcome, QVAddressBookSaveOutcome::Updated);
    EXPECT_EQ(readFile(mPath / "ada.vcf"),
              "BEGIN:VCARD\nVERSION:4.0\nFN:Ada\nN:;Ada;;;\nUID:ada\nEMAIL:a@example.com\nEND:VCARD\n");
}

TEST_F(QVVCardFolderTest, FindsByAnyEmailAddress) {
    mTemporary.write("a.vcf", card("a", "FN:A\r\nEMAIL:one@example.com\r\nEMAIL:Two@Example.com\r\n"));
    mTemporary.write("b.VCF", card("b", "FN:B\r\nEMAIL:TWO@example.com\r\n"));
    mTemporary.write(".c.vcf", card("c", "FN:C\r\nEMAIL:two@example.com\r\n"));
    mTemporary.write("d.txt", card("d", "FN:D\r\nEMAIL:two@example.com\r\n"));
    std::optional<qv::Error> error;
    const auto found = mFolder.profilesWithEmailAddress("two@example.com", &error);
    EXPECT_FALSE(error);
    ASSERT_THAT(found, SizeIs(2));
    EXPECT_EQ(found[0]->addressBookUID(), "a");
    EXPECT_EQ(found[1]->addressBookUID(), "b");
    EXPECT_EQ(found[0]->profileType(), QVSocialProfileSourceAddressBook);
    EXPECT_THAT(mFolder.profilesWithEmailAddress("", nullptr), IsEmpty());
    EXPECT_THAT(mFolder.profiles(nullptr), SizeIs(2));
    EXPECT_FALSE(mFolder.profileWithUID("c", nullptr));
}

TEST_F(QVVCardFolderTest, BrokenCardsAreLeftAloneAndReported) {
    const std::string broken = "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:broken\r\nnonsense\r\nEND:VCARD\r\n";
    mTemporary.write("1.vcf", broken);
    mTemporary.write("2.vcf", card("ok", "FN:Ok\r\nEMAIL:a@example.com\r\n"));
    std::optional<qv::Error> error;
    EXPECT_THAT(mFolder.profiles(&error), SizeIs(1));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, QVAddressBookErrorBrokenRecord);
    EXPECT_THAT(descriptionOf(error), AllOf(HasSubstr("1.vcf"), HasSubstr("line 4"), Not(HasSubstr("nonsense"))));
    error.reset();
    EXPECT_THAT(mFolder.profilesWithEmailAddress("a@example.com", &error), SizeIs(1));
    EXPECT_TRUE(error);

    QVSocialProfile profile = profileWithEmail("Ada", "b@example.com");
    profile.setProfileType(QVSocialProfileSourceAddressBook);
    for (const std::string UID : {"broken", "1"}) {
        profile.setAddressBookUID(UID);
        const QVAddressBookSaveResult result = mFolder.saveProfile(profile);
        ASSERT_TRUE(result.error);
        EXPECT_EQ(result.error->code, QVAddressBookErrorBrokenRecord);
        EXPECT_FALSE(result.UID);
        EXPECT_EQ(result.outcome, QVAddressBookSaveOutcome::None);
    }
    EXPECT_EQ(readFile(mPath / "1.vcf"), broken);
    EXPECT_THAT(filesIn(mPath), SizeIs(2));
}

TEST_F(QVVCardFolderTest, OddFilesNeitherHoldUpNorHide) {
    ASSERT_EQ(::mkfifo((mPath / "pipe.vcf").c_str(), 0600), 0);
    std::filesystem::create_directory(mPath / "folder.vcf");
    std::filesystem::create_symlink("nowhere", mPath / "dangling.vcf");
    mTemporary.write("large.vcf", card("large", "NOTE:" + std::string(std::size_t{17} << 20, 'a') + "\r\n"));
    mTemporary.write("ok.vcf", card("ok", "FN:Ok\r\n"));
    std::optional<qv::Error> error;
    EXPECT_THAT(mFolder.profiles(&error), SizeIs(1));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, QVAddressBookErrorUnreadable);
    EXPECT_THAT(descriptionOf(error), AllOf(HasSubstr("pipe.vcf"), HasSubstr("folder.vcf"), HasSubstr("too large")));
}

TEST_F(QVVCardFolderTest, ManyProblemsAreCounted) {
    for (int i = 0; i < 9; ++i)
        mTemporary.write(std::to_string(i) + ".vcf", "no");
    std::optional<qv::Error> error;
    mFolder.profiles(&error);
    EXPECT_THAT(descriptionOf(error), AllOf(HasSubstr("4.vcf"), Not(HasSubstr("5.vcf")), HasSubstr("and 4 more")));
}

TEST_F(QVVCardFolderTest, NothingToSaveIsRefused) {
    const QVAddressBookSaveResult result = mFolder.saveProfile(QVSocialProfile());
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->code, QVAddressBookErrorNoProfile);
    EXPECT_THAT(filesIn(mPath), IsEmpty());
}

TEST_F(QVVCardFolderTest, ARecordWithNothingThatWeKnowCanBeSaved) {
    const auto file = mTemporary.write("u.vcf", card("u", "FN:\r\nN:;;;;\r\nNOTE:a\r\n"));
    const QVAddressBookSaveResult result = mFolder.saveProfile(*mFolder.profileWithUID("u", nullptr));
    EXPECT_FALSE(result.error) << descriptionOf(result.error);
    EXPECT_EQ(result.outcome, QVAddressBookSaveOutcome::Updated);
    QVSocialProfile gone;
    gone.setProfileType(QVSocialProfileSourceAddressBook);
    gone.setAddressBookUID("gone");
    const auto error = mFolder.saveProfile(gone).error;
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, QVAddressBookErrorNoProfile);
    EXPECT_THAT(filesIn(mPath), ElementsAre("u.vcf"));
}

TEST_F(QVVCardFolderTest, AChangeMadeMeanwhileIsMergedNotOverwritten) {
    mTemporary.write("u.vcf", card("u", "FN:Ada Example\r\nN:Example;Ada;;;\r\n"));
    int calls = 0;
    mFolder.setWillReplace([&](const std::filesystem::path& file) {
        EXPECT_EQ(file, mPath / "u.vcf");
        if (++calls <= 3)
            mTemporary.write(
                "u.vcf", card("u", "FN:Ada Example\r\nN:Example;Ada;;;\r\nX-CHANGE:" + std::to_string(calls) + "\r\n"));
    });
    const QVAddressBookSaveResult result = mFolder.saveProfile(recordWithEmail("u", "a@example.com"));
    EXPECT_EQ(result.outcome, QVAddressBookSaveOutcome::Updated);
    EXPECT_EQ(calls, 4);
    EXPECT_EQ(readFile(mPath / "u.vcf"),
              card("u", "FN:Ada Example\r\nN:Example;Ada;;;\r\nX-CHANGE:3\r\nEMAIL:a@example.com\r\n"));
    EXPECT_THAT(filesIn(mPath), ElementsAre("u.vcf"));
}

TEST_F(QVVCardFolderTest, ACardThatGoesMeanwhileIsMadeAnew) {
    mTemporary.write("name.vcf", card("u", "FN:Ada\r\n"));
    mFolder.setWillReplace([](const std::filesystem::path& file) { std::filesystem::remove(file); });
    const QVAddressBookSaveResult result = mFolder.saveProfile(recordWithEmail("u", "a@example.com"));
    EXPECT_EQ(result.outcome, QVAddressBookSaveOutcome::Created);
    EXPECT_THAT(filesIn(mPath), ElementsAre("u.vcf"));
}

TEST_F(QVVCardFolderTest, ACardThatIsRenamedMeanwhileIsFoundAgain) {
    mTemporary.write("name.vcf", card("u", "FN:Ada Example\r\nN:;;;;\r\n"));
    bool isMoved = false;
    mFolder.setWillReplace([&](const std::filesystem::path& file) {
        if (!std::exchange(isMoved, true)) std::filesystem::rename(file, mPath / "other.vcf");
    });
    const QVAddressBookSaveResult result = mFolder.saveProfile(recordWithEmail("u", "a@example.com"));
    EXPECT_EQ(result.outcome, QVAddressBookSaveOutcome::Updated);
    EXPECT_THAT(filesIn(mPath), ElementsAre("other.vcf"));
    EXPECT_THAT(readFile(mPath / "other.vcf"), HasSubstr("EMAIL:a@example.com\r\n"));
}

TEST_F(QVVCardFolderTest, OthersWhoNeverStopGiveAConflict) {
    mTemporary.write("u.vcf", card("u", "FN:Ada\r\n"));
    int calls = 0;
    mFolder.setWillReplace([&](const std::filesystem::path&) {
        mTemporary.write("u.vcf", card("u", "FN:Ada\r\nX-CHANGE:" + std::to_string(++calls) + "\r\n"));
    });
    const QVAddressBookSaveResult result = mFolder.saveProfile(recordWithEmail("u", "a@example.com"));
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->code, QVAddressBookErrorConflict);
    EXPECT_EQ(calls, 20);
    EXPECT_EQ(readFile(mPath / "u.vcf"), card("u", "FN:Ada\r\nX-CHANGE:20\r\n"));
    EXPECT_THAT(filesIn(mPath), ElementsAre("u.vcf"));
}

TEST_F(QVVCardFolderTest, LeftoversOfKilledSaversGo) {
    mTemporary.write(".qvcardscan-123.tmp", "half");
    mTemporary.write(".other.tmp", "not ours");
    EXPECT_FALSE(mFolder.saveProfile(profileWithEmail("Ada", "a@example.com")).error);
    EXPECT_FALSE(std::filesystem::exists(mPath / ".qvcardscan-123.tmp"));
    EXPECT_TRUE(std::filesystem::exists(mPath / ".other.tmp"));
}

TEST_F(QVVCardFolderTest, AFolderThatCannotBeWrittenIsReported) {
    if (::geteuid() == 0) {
        // Nothing keeps the administrator out but a folder that is none.
        QVVCardFolder file(mTemporary.write("file", "x"));
        const auto error = file.saveProfile(profileWithEmail("Ada", "a@example.com")).error;
        ASSERT_TRUE(error);
        EXPECT_EQ(error->code, QVAddressBookErrorUnwritable);
        return;
    }
    ::chmod(mPath.c_str(), 0500);
    const auto error = mFolder.saveProfile(profileWithEmail("Ada", "a@example.com")).error;
    ::chmod(mPath.c_str(), 0700);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, QVAddressBookErrorUnwritable);
}

TEST_F(QVVCardFolderTest, WorksThroughTheInterface) {
    QVAddressBook& book = mFolder;
    const QVString UID = book.saveProfile(profileWithEmail("山田太郎", "taro@example.com")).UID;
    const auto found = book.profilesWithEmailAddress("TARO@example.com", nullptr);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found.front()->addressBookUID(), UID);
    EXPECT_EQ(found.front()->formattedName(), "山田太郎");
    EXPECT_THAT(readFile(mFolder.fileWithUID(*UID)), HasSubstr("N:山田;太郎;;;\r\n"));
}

}  // namespace
