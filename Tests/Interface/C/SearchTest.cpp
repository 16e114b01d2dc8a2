#include "CardHost.h"
#include "Support/TemporaryFolder.h"

#include <thread>
#include <vector>

namespace capitest {
namespace {

using testing::HasSubstr;

constexpr const char* kCard =
    "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:1\r\nFN:Ada Example\r\nEMAIL:ada@example.com\r\nORG:Example "
    "Works\r\nEND:VCARD\r\n";

/// What searches came to; for the interface's user data. Main thread only.
struct Outcomes {
    std::vector<qv_search_result*> results;
    int releases = 0;
    std::thread::id thread;

    ~Outcomes() {
        for (qv_search_result* result : results)
            qv_search_result_release(result);
    }
    static void complete(qv_search_result* result, void* data) {
        auto& outcomes = *static_cast<Outcomes*>(data);
        outcomes.results.push_back(result);
        outcomes.thread = std::this_thread::get_id();
    }
    static void release(void* data) { ++static_cast<Outcomes*>(data)->releases; }
    qv_status start(const qv_response* response) { return qv_search_start(response, complete, this, release, nullptr); }
    bool waitForReleases(int count) {
        struct Goal {
            Outcomes& outcomes;
            int count;
        } goal{*this, count};
        const auto isReached = [](void* data) -> int32_t {
            return static_cast<Goal*>(data)->outcomes.releases >= static_cast<Goal*>(data)->count;
        };
        return qv_pump_until(isReached, &goal, 60) != 0;
    }
};

class SearchTest : public CardHost {
  protected:
    void SetUp() override {
        CardHost::SetUp();
        qv_pump();
        mFolder.write("ada.vcf", kCard);
        ASSERT_EQ(qv_set_contacts_folder(mFolder.path().c_str(), nullptr), QV_OK);
        ASSERT_EQ(qv_set_search_credentials("", "", nullptr), QV_OK);
        qv_set_search_time_out(60);
    }

    testsupport::TemporaryFolder mFolder;
};

TEST_F(SearchTest, BringsTheNewNoteOnce) {
    const Response response = respond(makeRequest().get());
    EXPECT_EQ(qv_response_can_search(response.get()), 1);
    const std::string before = textOf(qv_response_note(response.get()));
    EXPECT_THAT(before, testing::Not(HasSubstr("Example Works")));
    Outcomes outcomes;
    ASSERT_EQ(outcomes.start(response.get()), QV_OK);
    EXPECT_TRUE(outcomes.results.empty()) << "never inside the call";
    ASSERT_TRUE(outcomes.waitForReleases(1));
    ASSERT_EQ(outcomes.results.size(), 1U);
    const qv_search_result* const result = outcomes.results[0];
    EXPECT_EQ(outcomes.thread, std::this_thread::get_id());
    EXPECT_EQ(qv_search_result_type(result), QV_SEARCH_NOT_FOUND) << "the profile has neither page";
    EXPECT_EQ(qv_search_result_has_profile(result), 1);
    EXPECT_STREQ(qv_search_result_note_uuid(result), "a-note");
    EXPECT_THAT(textOf(qv_search_result_note(result)), HasSubstr("Example Works"));
    EXPECT_EQ(textOf(qv_response_note(response.get())), before) << "a response never changes";
    EXPECT_EQ(qv_search_result_resource_count(result), 2U);
    qv_resource resource = {};
    resource.size = sizeof resource;
    ASSERT_EQ(qv_search_result_resource(result, 0, &resource), 1);
    EXPECT_STREQ(resource.hash, "a-hash");
}

TEST_F(SearchTest, TellsTheContactAsItIsNow) {
    const Response response = respond(makeRequest().get());
    Outcomes outcomes;
    ASSERT_EQ(outcomes.start(response.get()), QV_OK);
    ASSERT_TRUE(outcomes.waitForReleases(1));
    std::vector<std::string> companies;
    qv_field field = {};
    field.size = sizeof field;
    for (size_t i = 0; qv_search_result_field(outcomes.results[0], i, &field) != 0; ++i) {
        if (field.kind == QV_FIELD_COMPANY) companies.emplace_back(field.text);
    }
    EXPECT_THAT(companies, testing::ElementsAre("Example Works"));
    EXPECT_GT(qv_search_result_field_count(outcomes.results[0]), qv_response_field_count(response.get()));
}

TEST_F(SearchTest, SaysWhenNobodyIsFound) {
    ASSERT_EQ(qv_set_contacts_folder(nullptr, nullptr), QV_OK);
    const Response response = respond(makeRequest().get());
    Outcomes outcomes;
    ASSERT_EQ(outcomes.start(response.get()), QV_OK);
    ASSERT_TRUE(outcomes.waitForReleases(1));
    EXPECT_EQ(qv_search_result_type(outcomes.results.at(0)), QV_SEARCH_NOT_FOUND);
    EXPECT_EQ(qv_search_result_has_profile(outcomes.results[0]), 0);
    EXPECT_EQ(qv_search_result_note(outcomes.results[0]), nullptr);
    EXPECT_EQ(qv_search_result_resource_count(outcomes.results[0]), 0U);
    EXPECT_GT(qv_search_result_field_count(outcomes.results[0]), 0U);
}

TEST_F(SearchTest, EndsWithTheTimeOutWithoutCredentials) {
    ASSERT_EQ(qv_set_search_credentials("key", nullptr, nullptr), QV_OK);
    qv_set_search_time_out(0.001);
    const Response response = respond(makeRequest().get());
    EXPECT_EQ(qv_response_can_search(response.get()), 0);
    Outcomes outcomes;
    ASSERT_EQ(outcomes.start(response.get()), QV_OK);
    ASSERT_TRUE(outcomes.waitForReleases(1));
    EXPECT_EQ(qv_search_result_type(outcomes.results.at(0)), QV_SEARCH_TIMED_OUT);
}

TEST_F(SearchTest, MayStartOnAnyThread) {
    const Response response = respond(makeRequest().get());
    Outcomes outcomes;
    std::jthread([&] { EXPECT_EQ(outcomes.start(response.get()), QV_OK); }).join();
    ASSERT_TRUE(outcomes.waitForReleases(1));
    EXPECT_EQ(outcomes.thread, std::this_thread::get_id());
}

TEST_F(SearchTest, GivesTheOneOutcomeToAllWhoAskedForTheNote) {
    const Response response = respond(makeRequest().get());
    Outcomes outcomes;
    ASSERT_EQ(outcomes.start(response.get()), QV_OK);
    ASSERT_EQ(outcomes.start(response.get()), QV_OK);
    ASSERT_TRUE(outcomes.waitForReleases(2));
    EXPECT_EQ(outcomes.results.size(), 2U);
}

TEST_F(SearchTest, KeepsWhatItNeedsWhenTheResponseIsReleased) {
    Response response = respond(makeRequest().get());
    Outcomes outcomes;
    ASSERT_EQ(outcomes.start(response.get()), QV_OK);
    response.reset();
    ASSERT_TRUE(outcomes.waitForReleases(1));
    EXPECT_THAT(textOf(qv_search_result_note(outcomes.results.at(0))), HasSubstr("Example Works"));
}

TEST_F(SearchTest, ReleasesTheUserDataWhenItCannotStart) {
    Outcomes outcomes;
    EXPECT_EQ(outcomes.start(nullptr), QV_INVALID_ARGUMENT);
    EXPECT_EQ(outcomes.releases, 1);
    const Response response = respond(makeRequest().get());
    EXPECT_EQ(qv_search_start(response.get(), nullptr, &outcomes, Outcomes::release, nullptr), QV_INVALID_ARGUMENT);
    EXPECT_EQ(outcomes.releases, 2);
}

}  // namespace
}  // namespace capitest
