#include "QVSocialSearch/QVVCardFolder.h"
#include "SocialSearch/CardDAVFixture.h"
#include "SocialSearch/SocialFixtures.h"
#include "Support/ReadFile.h"
#include "Support/TemporaryFolder.h"
#include "Support/TestImages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using namespace davtest;

/// An address book, and another program that writes and reads the card behind its back.
class FolderBook {
  public:
    QVAddressBook& book() { return mBook; }
    void write(const std::string& bytes) { mFolder.write("u.vcf", bytes); }
    void remove() { std::filesystem::remove(mFolder / "u.vcf"); }
    std::string read() { return testsupport::readFile(mFolder / "u.vcf"); }

  private:
    testsupport::TemporaryFolder mFolder;
    QVVCardFolder mBook{mFolder.path()};
};

class ServerBook {
  public:
    QVAddressBook& book() { return mBook; }
    void write(const std::string& bytes) { mServer.putCard("u.vcf", bytes); }
    void remove() { mServer.removeCard("u.vcf"); }
    std::string read() { return mServer.cards()["u.vcf"]; }

  private:
    testsupport::FakeCardDAVServer mServer;
    QVCardDAVAddressBook mBook{mServer.collection(), {}};
};

const std::string kBefore =
    "FN:Ada Example\r\nN:Example;Ada;;;\r\nTITLE:Engineer\r\nORG:Old Ltd.\r\n"
    "X-SOCIALPROFILE;TYPE=linkedin:https://www.linkedin.com/in/old\r\n"
    "X-SOCIALPROFILE;TYPE=facebook:https://www.facebook.com/old\r\n";
const std::string kAfter =
    "FN:Ada New\r\nN:New;Ada;;;\r\nTITLE:Director\r\nORG:New Ltd.\r\n"
    "X-SOCIALPROFILE;TYPE=linkedin:https://www.linkedin.com/in/new\r\n"
    "X-SOCIALPROFILE;TYPE=facebook:https://www.facebook.com/new\r\n";

template <typename Book>
class RecordAsReadTest : public testing::Test {
  protected:
    std::shared_ptr<QVSocialProfile> readBefore() {
        mBook.write(card("u", kBefore));
        auto profile = mBook.book().profileWithUID("u", nullptr);
        EXPECT_TRUE(profile);
        return profile;
    }
    void save(const QVSocialProfile& profile) { EXPECT_FALSE(mBook.book().saveProfile(profile).error); }

    Book mBook;
};

using Books = testing::Types<FolderBook, ServerBook>;
TYPED_TEST_SUITE(RecordAsReadTest, Books);

TYPED_TEST(RecordAsReadTest, WhatOthersChangedMeanwhileStays) {
    const auto profile = this->readBefore();
    this->mBook.write(card("u", kAfter));
    profile->mergeWithEmailSet(social::emails({{std::nullopt, "ada@example.com"}}));
    this->save(*profile->copy());
    EXPECT_EQ(this->mBook.read(), card("u", kAfter + "EMAIL:ada@example.com\r\n"));
}

TYPED_TEST(RecordAsReadTest, WhatOthersTookAwayStaysAway) {
    const auto profile = this->readBefore();
    this->mBook.write(card("u", "FN:Ada Example\r\nN:Example;Ada;;;\r\n"));
    this->save(*profile);
    EXPECT_EQ(this->mBook.read(), card("u", "FN:Ada Example\r\nN:Example;Ada;;;\r\n"));
}

TYPED_TEST(RecordAsReadTest, WhatTheProfileChangedIsWritten) {
    const auto profile = this->readBefore();
    this->mBook.write(card("u", kAfter));
    profile->setJobTitle("Chief");
    profile->setProfileURLFacebook("https://www.facebook.com/chief");
    this->save(*profile);
    EXPECT_THAT(this->mBook.read(), AllOf(HasSubstr("TITLE:Chief\r\n"), HasSubstr("https://www.facebook.com/chief\r\n"),
                                          HasSubstr("FN:Ada New\r\n"), HasSubstr("ORG:New Ltd.\r\n"),
                                          HasSubstr("https://www.linkedin.com/in/new\r\n")));
}

TYPED_TEST(RecordAsReadTest, ANewerPictureStays) {
    const auto pictured = [](testsupport::Colour colour) {
        auto profile = social::profile("Ada Example", QVSocialProfileSourceAddressBook);
        profile->setAddressBookUID("u");
        profile->setAddressBookAvatarData(testsupport::makePNG(testsupport::Pixels(8, 8, colour)));
        return profile;
    };
    this->save(*pictured(testsupport::kRed));
    const auto profile = this->mBook.book().profileWithUID("u", nullptr);
    this->save(*pictured(testsupport::kBlue));
    const std::string newer = this->mBook.read();
    this->save(*profile);
    EXPECT_EQ(this->mBook.read(), newer);
    profile->setAddressBookAvatarData(testsupport::makePNG(testsupport::Pixels(8, 8, testsupport::kGreen)));
    this->save(*profile);
    EXPECT_NE(this->mBook.read(), newer);
}

TYPED_TEST(RecordAsReadTest, ARecordThatIsGoneIsMadeAnewWithAllOfIt) {
    const auto profile = this->readBefore();
    this->mBook.remove();
    this->save(*profile);
    EXPECT_THAT(this->mBook.read(),
                AllOf(HasSubstr("FN:Ada Example\r\n"), HasSubstr("TITLE:Engineer\r\n"), HasSubstr("ORG:Old Ltd.\r\n"),
                      HasSubstr("https://www.linkedin.com/in/old\r\n")));
}

TYPED_TEST(RecordAsReadTest, ProfilesThatWereNotReadWriteAll) {
    this->mBook.write(card("u", kBefore));
    auto profile = social::profile("Ada Own", QVSocialProfileSourceAddressBook);
    profile->setAddressBookUID("u");
    profile->setJobTitle("Engineer");
    EXPECT_EQ(profile->recordAsRead(), nullptr);
    this->save(*profile);
    EXPECT_THAT(this->mBook.read(), AllOf(HasSubstr("FN:Ada Own\r\n"), Not(HasSubstr("FN:Ada Example"))));
}

}  // namespace
