#include "CardHost.h"
#include "Support/CapturedLog.h"

#include <thread>
#include <vector>

namespace capitest {
namespace {

using testsupport::CapturedLog;

constexpr const char* kWarning =
    "<WARNING> A call was given a handle that is released already, or of another kind! Ignored.";

class HandleTableTest : public CardHost {};

TEST_F(HandleTableTest, TakesNullEverywhere) {
    const CapturedLog log;
    qv_field field = {};
    qv_card_field cardField = {};
    qv_resource resource = {};
    qv_request_release(nullptr);
    qv_response_release(nullptr);
    qv_search_result_release(nullptr);
    qv_error_release(nullptr);
    qv_work_release(nullptr);
    qv_work_run(nullptr);
    qv_request_set_skip_note(nullptr, 1);
    qv_request_set_completes_on_main_thread(nullptr, 1);
    EXPECT_EQ(qv_request_add_picture_bytes(nullptr, "x", 1, nullptr, nullptr), QV_INVALID_ARGUMENT);
    EXPECT_EQ(qv_request_add_picture_file(nullptr, "x", nullptr, nullptr), QV_INVALID_ARGUMENT);
    EXPECT_EQ(qv_request_set_token(nullptr, "x", nullptr), QV_INVALID_ARGUMENT);
    EXPECT_EQ(qv_request_set_language(nullptr, "x", nullptr), QV_INVALID_ARGUMENT);
    EXPECT_EQ(qv_request_run(nullptr, nullptr, nullptr, nullptr, nullptr), QV_INVALID_ARGUMENT);
    EXPECT_EQ(qv_search_start(nullptr, nullptr, nullptr, nullptr, nullptr), QV_INVALID_ARGUMENT);
    EXPECT_EQ(qv_response_note_uuid(nullptr), nullptr);
    EXPECT_EQ(qv_response_note(nullptr), nullptr);
    EXPECT_EQ(qv_response_name(nullptr), nullptr);
    EXPECT_EQ(qv_response_raw_result(nullptr, 0), nullptr);
    EXPECT_EQ(qv_response_rotation(nullptr), 0);
    EXPECT_EQ(qv_response_can_search(nullptr), 0);
    EXPECT_EQ(qv_response_error_count(nullptr), 0U);
    EXPECT_EQ(qv_response_error(nullptr, 0), nullptr);
    EXPECT_EQ(qv_response_field_count(nullptr), 0U);
    EXPECT_EQ(qv_response_field(nullptr, 0, &field), 0);
    EXPECT_EQ(qv_response_card_field_count(nullptr), 0U);
    EXPECT_EQ(qv_response_card_field(nullptr, 0, &cardField), 0);
    EXPECT_EQ(qv_response_resource_count(nullptr), 0U);
    EXPECT_EQ(qv_response_resource(nullptr, 0, &resource), 0);
    EXPECT_EQ(qv_search_result_type(nullptr), QV_SEARCH_NOT_FOUND);
    EXPECT_EQ(qv_search_result_has_profile(nullptr), 0);
    EXPECT_EQ(qv_search_result_note_uuid(nullptr), nullptr);
    EXPECT_EQ(qv_search_result_note(nullptr), nullptr);
    EXPECT_EQ(qv_search_result_field_count(nullptr), 0U);
    EXPECT_EQ(qv_search_result_field(nullptr, 0, &field), 0);
    EXPECT_EQ(qv_search_result_resource_count(nullptr), 0U);
    EXPECT_EQ(qv_search_result_resource(nullptr, 0, &resource), 0);
    EXPECT_EQ(qv_error_domain(nullptr), nullptr);
    EXPECT_EQ(qv_error_code(nullptr), 0);
    EXPECT_EQ(qv_error_message(nullptr), nullptr);
    EXPECT_EQ(qv_error_underlying(nullptr), nullptr);
    EXPECT_EQ(qv_pump_until(nullptr, nullptr, 1), 0);
    qv_cancel(nullptr);
    EXPECT_TRUE(log.messages().empty()) << "null is an ordinary answer";
}

TEST_F(HandleTableTest, FindsOutWhatWasReleased) {
    qv_request* const request = makeRequest().release();
    qv_request_release(request);
    const CapturedLog log;
    qv_request_release(request);
    qv_error* error = nullptr;
    EXPECT_EQ(qv_request_set_token(request, "x", &error), QV_INVALID_ARGUMENT);
    EXPECT_STREQ(qv_error_message(error), "The handle is null, released already, or of another kind.");
    EXPECT_EQ(qv_error_code(error), QV_INVALID_ARGUMENT);
    qv_error_release(error);
    EXPECT_EQ(qv_error_message(error), nullptr);
    EXPECT_EQ(log.count(kWarning), 3U);
}

TEST_F(HandleTableTest, NeverGivesAHandleTwice) {
    qv_request* const first = qv_request_create("a");
    qv_request_release(first);
    for (int i = 0; i < 1000; ++i) {
        qv_request* const next = qv_request_create("b");
        ASSERT_NE(next, first);
        qv_request_release(next);
    }
}

TEST_F(HandleTableTest, TellsTheKindsApart) {
    const Request request = makeRequest();
    const CapturedLog log;
    EXPECT_EQ(qv_response_note(reinterpret_cast<qv_response*>(request.get())), nullptr);
    qv_error_release(reinterpret_cast<qv_error*>(request.get()));
    EXPECT_EQ(qv_error_domain(reinterpret_cast<qv_error*>(std::uintptr_t{0x1234567})), nullptr);
    int foreign = 0;
    qv_work_run(reinterpret_cast<qv_work*>(&foreign));
    EXPECT_EQ(log.count(kWarning), 4U);
    EXPECT_EQ(qv_request_set_token(request.get(), "still there", nullptr), QV_OK);
}

TEST_F(HandleTableTest, LetsThreadsReleaseWhatOthersUse) {
    const Response response = respond(makeRequest().get());
    const CapturedLog log;
    std::vector<std::jthread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&] {
            for (int j = 0; j < 200; ++j) {
                qv_response_field_count(response.get());
                if (j == 100) qv_response_release(response.get());
            }
        });
    threads.clear();
    EXPECT_EQ(qv_response_field_count(response.get()), 0U);
    EXPECT_GE(log.count(kWarning), 8U);
}

}  // namespace
}  // namespace capitest
