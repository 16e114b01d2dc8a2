#include "CardHost.h"

#include <mutex>
#include <string>
#include <vector>

namespace capitest {
namespace {

struct Messages {
    std::mutex mutex;
    std::vector<std::string> texts;
    int releases = 0;

    static void take(const char* message, size_t length, void* data) {
        auto& messages = *static_cast<Messages*>(data);
        const std::lock_guard lock(messages.mutex);
        EXPECT_EQ(std::string(message).size(), length);
        messages.texts.emplace_back(message);
    }
    static void release(void* data) { ++static_cast<Messages*>(data)->releases; }
};

class ConfigurationTest : public CardHost {};

TEST_F(ConfigurationTest, TellsItsVersions) {
    EXPECT_EQ(qv_abi_version(), static_cast<unsigned>(QV_ABI_VERSION));
    EXPECT_THAT(qv_library_version(), testing::MatchesRegex("[0-9]+\\.[0-9]+\\.[0-9]+"));
}

TEST_F(ConfigurationTest, SendsTheLogToTheHostWithoutTheToken) {
    Messages messages;
    qv_set_log_sink(Messages::take, &messages, Messages::release);
    const Request request = makeRequest();
    ASSERT_EQ(qv_request_set_token(request.get(), "a-very-secret-token", nullptr), QV_OK);
    { const Response response = respond(request.get()); }
    qv_use_system_log();
    EXPECT_EQ(messages.releases, 1);
    EXPECT_THAT(messages.texts, testing::Contains("<INFO> Operation with ID: a-note completed!"));
    EXPECT_THAT(messages.texts, testing::Each(testing::Not(testing::HasSubstr("a-very-secret-token"))));
}

TEST_F(ConfigurationTest, DiscardsTheLogWithoutASink) {
    Messages messages;
    qv_set_log_sink(Messages::take, &messages, Messages::release);
    qv_set_log_sink(nullptr, &messages, Messages::release);
    EXPECT_EQ(messages.releases, 2);
    { const Response response = respond(makeRequest().get()); }
    EXPECT_TRUE(messages.texts.empty());
}

}  // namespace
}  // namespace capitest
