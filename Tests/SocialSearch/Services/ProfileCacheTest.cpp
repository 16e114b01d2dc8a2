#include "SocialSearch/Services/GravatarFixture.h"

using namespace std::chrono_literals;

namespace {

using testsupport::ScriptedServer;

class ProfileCacheTest : public social::GravatarFixture {
  protected:
    static std::string hit(const std::string& company = "Example Ltd.") {
        return ScriptedServer::answer(200, R"({"company": ")" + company + "\"}");
    }
    static std::string addressOf(std::size_t number) { return std::to_string(number) + "@example.com"; }

    /// A picture that takes up so much room.
    static std::string pictureOfSize(std::size_t size) {
        qv::Data bytes = picture();
        bytes.resize(size);
        return ScriptedServer::answer(200, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    }
};

TEST_F(ProfileCacheTest, RemembersAHitForADay) {
    mService.respond(hit("Old Ltd."));
    mService.respond(hit("New Ltd."));
    const auto service = provider();
    EXPECT_EQ(find(service)->company(), "Old Ltd.");
    pass(24h - 1s);
    EXPECT_EQ(find(service, "JORDAN@example.com ")->company(), "Old Ltd.");
    EXPECT_EQ(asked(), 1U);
    pass(1s);
    EXPECT_EQ(find(service)->company(), "New Ltd.");
    EXPECT_EQ(asked(), 2U);
}

TEST_F(ProfileCacheTest, RemembersAMissForAnHour) {
    mService.respond(ScriptedServer::answer(404, ""));
    mService.respond(hit());
    const auto service = provider();
    EXPECT_EQ(find(service), nullptr);
    pass(1h - 1s);
    EXPECT_EQ(find(service), nullptr);
    EXPECT_EQ(asked(), 1U);
    pass(1s);
    EXPECT_NE(find(service), nullptr);
}

TEST_F(ProfileCacheTest, RemembersAProfileThatSaysNothingAsAMiss) {
    mService.respond(ScriptedServer::answer(200, "{}"));
    mService.respond(hit());
    const auto service = provider();
    EXPECT_EQ(find(service), nullptr);
    EXPECT_EQ(find(service), nullptr);
    EXPECT_EQ(asked(), 1U);
    pass(1h);
    EXPECT_NE(find(service), nullptr);
}

TEST_F(ProfileCacheTest, RemembersThatThereIsNoPicture) {
    mElsewhere.respond(ScriptedServer::answer(404, ""));
    mService.respond(ScriptedServer::answer(200, R"({"company": "C", "avatar_url": ")" + mElsewhere.url() + "\"}"));
    const auto service = provider();
    find(service);
    pass(23h);
    find(service);
    EXPECT_EQ(asked(), 1U);
    EXPECT_EQ(mElsewhere.requests().size(), 1U);
}

TEST_F(ProfileCacheTest, HandsOutProfilesOfTheirOwn) {
    mService.respond(hit());
    const auto service = provider();
    find(service)->setCompany("Changed");
    EXPECT_EQ(find(service)->company(), "Example Ltd.");
    EXPECT_EQ(asked(), 1U);
}

TEST_F(ProfileCacheTest, TrustsNoEntryFromTheFuture) {
    mService.respond(hit());
    const auto service = provider();
    find(service);
    pass(-1s);
    find(service);
    EXPECT_EQ(asked(), 2U) << "the clock was set back";
}

TEST_F(ProfileCacheTest, AnswersWithoutTheServiceAndWithoutTime) {
    mService.respond(hit());
    const auto service = provider();
    find(service);
    EXPECT_NE(find(service, "jordan@example.com", social::Clock::now()), nullptr);
}

TEST_F(ProfileCacheTest, BelongsToOneProvider) {
    mService.respond(hit());
    find(provider());
    find(provider());
    EXPECT_EQ(asked(), 2U);
}

TEST_F(ProfileCacheTest, ForgetsTheOldestOfTooMany) {
    mService.respond(hit());
    const auto service = provider();
    constexpr std::size_t kMost = 256;
    for (std::size_t number = 0; number <= kMost; ++number)
        find(service, addressOf(number));
    EXPECT_EQ(asked(), kMost + 1);
    find(service, addressOf(kMost));
    find(service, addressOf(1));
    EXPECT_EQ(asked(), kMost + 1);
    find(service, addressOf(0));
    EXPECT_EQ(asked(), kMost + 2);
}

TEST_F(ProfileCacheTest, ForgetsTheOldestOfTooLargePictures) {
    constexpr std::size_t kMegabyte = std::size_t{1} << 20;
    mElsewhere.respond(pictureOfSize(15 * kMegabyte));
    mService.respond(ScriptedServer::answer(200, R"({"company": "C", "avatar_url": ")" + mElsewhere.url() + "\"}"));
    const auto service = provider();
    for (std::size_t number = 0; number < 3; ++number)
        EXPECT_EQ(find(service, addressOf(number))->addressBookAvatarData()->size(), 15 * kMegabyte);
    find(service, addressOf(2));
    find(service, addressOf(1));
    EXPECT_EQ(asked(), 3U);
    find(service, addressOf(0));
    EXPECT_EQ(asked(), 4U);
}

}  // namespace
