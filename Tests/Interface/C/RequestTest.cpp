#include "CardHost.h"
#include "Support/TemporaryFolder.h"

#include <thread>
#include <vector>

namespace capitest {
namespace {

using testing::HasSubstr;
using RequestTest = CardHost;

std::string message(qv_error* error) {
    const Error owned = own(error);
    EXPECT_STREQ(qv_error_domain(error), QV_C_ERROR_DOMAIN);
    return textOf(qv_error_message(error));
}

TEST_F(RequestTest, SendsWhatTheHostSays) {
    const Request request = makeRequest();
    ASSERT_EQ(qv_request_set_language(request.get(), "de", nullptr), QV_OK);
    const Response response = respond(request.get());
    ASSERT_EQ(mServer.requests().size(), 1U);
    EXPECT_EQ(mServer.requests()[0].header("auth"), "a-token");
    EXPECT_EQ(mServer.requests()[0].header("content-language"), "de");
    EXPECT_STREQ(qv_response_note_uuid(response.get()), "a-note");
}

TEST_F(RequestTest, TakesPicturesAsBytesAndCopiesThem) {
    std::string bytes = testsupport::readFile(picture());
    const Request request(qv_request_create("bytes"), qv_request_release);
    ASSERT_EQ(qv_request_add_picture_bytes(request.get(), bytes.data(), bytes.size(), nullptr, nullptr), QV_OK);
    bytes.assign(bytes.size(), 'x');
    ASSERT_EQ(qv_request_set_token(request.get(), "a-token", nullptr), QV_OK);
    const Response response = respond(request.get());
    EXPECT_EQ(qv_response_error_count(response.get()), 0U);
    EXPECT_STREQ(qv_response_name(response.get()), "Ada Example");
}

TEST_F(RequestTest, ReadsBothSides) {
    testsupport::ScriptedServer server;
    server.respond(testsupport::ScriptedServer::answer(
        200, "<recoIndex><item fldType=\"phone\"><t w=\"9\">1</t></item></recoIndex>"));
    server.respond(testsupport::ScriptedServer::answer(200, kAnswer));
    ASSERT_EQ(qv_set_server_url(server.url().c_str(), nullptr), QV_OK);
    const Request request = makeRequest();
    ASSERT_EQ(qv_request_add_picture_file(request.get(), picture().c_str(), "the-back", nullptr), QV_OK);
    const Response response = respond(request.get());
    EXPECT_STREQ(qv_response_name(response.get()), "Ada Example");
    EXPECT_THAT(textOf(qv_response_raw_result(response.get(), 0)), HasSubstr("phone"));
    EXPECT_STREQ(qv_response_raw_result(response.get(), 1), kAnswer);
    EXPECT_EQ(qv_response_raw_result(response.get(), 2), nullptr);
    EXPECT_EQ(qv_response_raw_result(response.get(), SIZE_MAX), nullptr);
}

TEST_F(RequestTest, SaysWhyAPictureIsNotTaken) {
    const testsupport::TemporaryFolder folder;
    const Request request = makeRequest();
    qv_error* error = nullptr;
    EXPECT_EQ(qv_request_add_picture_file(request.get(), (folder / "none.jpg").c_str(), nullptr, &error),
              QV_UNREADABLE);
    EXPECT_EQ(message(error), "The file cannot be read.");
    EXPECT_EQ(qv_request_add_picture_bytes(request.get(), "hello", 5, nullptr, &error), QV_UNREADABLE);
    EXPECT_THAT(message(error), HasSubstr("no picture"));
    EXPECT_EQ(qv_request_add_picture_bytes(request.get(), "", 0, nullptr, nullptr), QV_UNREADABLE);
    EXPECT_EQ(qv_request_add_picture_bytes(request.get(), nullptr, 5, nullptr, &error), QV_INVALID_ARGUMENT);
    EXPECT_EQ(message(error), "There are no bytes.");
    EXPECT_EQ(qv_request_add_picture_file(request.get(), nullptr, nullptr, nullptr), QV_INVALID_ARGUMENT);
    EXPECT_EQ(qv_request_add_picture_file(request.get(), picture().c_str(), "\xFF", &error), QV_INVALID_ARGUMENT);
    EXPECT_EQ(message(error), "The picture's hash is no UTF-8 text.");
    ASSERT_EQ(qv_request_add_picture_file(request.get(), picture().c_str(), nullptr, &error), QV_OK);
    EXPECT_EQ(error, nullptr) << "the slot says that nothing failed";
    EXPECT_EQ(qv_request_add_picture_file(request.get(), picture().c_str(), nullptr, &error), QV_INVALID_ARGUMENT);
    EXPECT_THAT(message(error), HasSubstr("two sides"));
}

TEST_F(RequestTest, ReleasesTheUserDataOnceWhenItCannotRun) {
    const Request empty(qv_request_create("empty"), qv_request_release);
    qv_error* error = nullptr;
    Run run;
    EXPECT_EQ(run.start(empty.get(), &error), QV_INVALID_ARGUMENT);
    EXPECT_EQ(message(error), "The request has no picture.");
    EXPECT_EQ(run.releases, 1) << "before the call returns";
    ASSERT_EQ(qv_request_add_picture_file(empty.get(), picture().c_str(), nullptr, nullptr), QV_OK);
    EXPECT_EQ(run.start(empty.get(), &error), QV_INVALID_ARGUMENT);
    EXPECT_EQ(message(error), "The request has no token.");
    EXPECT_EQ(run.releases, 2);
    EXPECT_EQ(run.start(nullptr), QV_INVALID_ARGUMENT);
    EXPECT_EQ(run.releases, 3);
    EXPECT_EQ(qv_request_run(empty.get(), nullptr, &run, Run::release, nullptr), QV_INVALID_ARGUMENT);
    EXPECT_EQ(run.releases, 4);
    EXPECT_EQ(run.completions, 0);
}

TEST_F(RequestTest, RefusesTextsThatAreNoText) {
    EXPECT_EQ(qv_request_create(nullptr), nullptr);
    EXPECT_EQ(qv_request_create("\xC3"), nullptr);
    const Request request = makeRequest();
    EXPECT_EQ(qv_request_set_token(request.get(), "\xFF", nullptr), QV_INVALID_ARGUMENT);
    EXPECT_EQ(qv_request_set_language(request.get(), "\xED\xA0\x80", nullptr), QV_INVALID_ARGUMENT);
    EXPECT_EQ(qv_set_server_url("\x80", nullptr), QV_INVALID_ARGUMENT);
    EXPECT_EQ(qv_set_search_credentials("key", "\xFE", nullptr), QV_INVALID_ARGUMENT);
}

/// A server that holds its answer back until the test opens the gate.
class SlowServerTest : public CardHost {
  protected:
    void SetUp() override {
        mSlow.respondAfter(mGate, testsupport::ScriptedServer::answer(200, kAnswer));
        ASSERT_EQ(qv_set_server_url(mSlow.url().c_str(), nullptr), QV_OK);
    }
    void TearDown() override { mGate->open(); }

    const std::shared_ptr<testsupport::Gate> mGate = std::make_shared<testsupport::Gate>();
    testsupport::ScriptedServer mSlow;
};

TEST_F(SlowServerTest, RefusesANoteThatIsUnderWay) {
    const Request request = makeRequest("twice");
    Run first;
    ASSERT_EQ(first.start(request.get()), QV_OK);
    Run second;
    qv_error* error = nullptr;
    EXPECT_EQ(second.start(request.get(), &error), QV_REFUSED);
    EXPECT_EQ(message(error), "A request for that note is under way.");
    EXPECT_EQ(second.releases, 1);
    mGate->open();
    ASSERT_TRUE(first.released.waitFor());
    qv_response_release(first.response);
    EXPECT_EQ(second.completions, 0);
}

TEST_F(SlowServerTest, OneOfManyThreadsWins) {
    const Request request = makeRequest("raced");
    std::atomic<int> accepted{0};
    std::vector<std::unique_ptr<Run>> runs;
    std::vector<std::jthread> threads;
    for (int i = 0; i < 8; ++i)
        runs.push_back(std::make_unique<Run>());
    for (auto& run : runs)
        threads.emplace_back([&] { accepted += run->start(request.get()) == QV_OK ? 1 : 0; });
    threads.clear();
    EXPECT_EQ(accepted, 1);
    mGate->open();
    for (auto& run : runs) {
        ASSERT_TRUE(run->released.waitFor());
        qv_response_release(run->response);
    }
}

TEST_F(SlowServerTest, CancellingReleasesTheUserDataAndCompletesNothing) {
    const Request request = makeRequest("cancelled");
    Run run;
    ASSERT_EQ(run.start(request.get()), QV_OK);
    ASSERT_TRUE(mSlow.waitForRequests(1));
    qv_cancel("another");
    qv_cancel(nullptr);
    qv_cancel("cancelled");
    mGate->open();
    ASSERT_TRUE(run.released.waitFor());
    EXPECT_EQ(run.completions, 0);
    EXPECT_EQ(run.releases, 1);
}

TEST_F(SlowServerTest, RunsAsItWasWhenItStarted) {
    Request request = makeRequest("kept");
    Run run;
    ASSERT_EQ(run.start(request.get()), QV_OK);
    request.reset();
    mGate->open();
    ASSERT_TRUE(run.released.waitFor());
    EXPECT_STREQ(qv_response_name(run.response), "Ada Example");
    qv_response_release(run.response);
}

TEST_F(RequestTest, CompletesOnTheMainThreadWhenTheHostWishesSo) {
    struct State {
        std::thread::id thread;
        bool done = false;
    } state;
    const Request request = makeRequest();
    qv_request_set_completes_on_main_thread(request.get(), 1);
    const auto complete = [](qv_response* response, void* data) {
        static_cast<State*>(data)->thread = std::this_thread::get_id();
        static_cast<State*>(data)->done = true;
        qv_response_release(response);
    };
    const auto isDone = [](void* data) -> int32_t { return static_cast<State*>(data)->done; };
    ASSERT_EQ(qv_request_run(request.get(), complete, &state, nullptr, nullptr), QV_OK);
    EXPECT_EQ(qv_pump_until(isDone, &state, 60), 1);
    EXPECT_EQ(state.thread, std::this_thread::get_id());
}

TEST_F(RequestTest, LetsTheCompletionCallBackIn) {
    struct Chain {
        Request next = makeRequest("next");
        Run last;
        std::string name;
    } chain;
    const auto complete = [](qv_response* response, void* data) {
        auto& state = *static_cast<Chain*>(data);
        EXPECT_EQ(state.last.start(state.next.get()), QV_OK);
        state.next.reset();
        state.name = textOf(qv_response_name(response));
        qv_response_release(response);
        qv_response_release(response);
    };
    const Request request = makeRequest("first");
    ASSERT_EQ(qv_request_run(request.get(), complete, &chain, nullptr, nullptr), QV_OK);
    ASSERT_TRUE(chain.last.released.waitFor());
    EXPECT_EQ(chain.name, "Ada Example");
    EXPECT_STREQ(qv_response_note_uuid(chain.last.response), "next");
    qv_response_release(chain.last.response);
}

TEST_F(RequestTest, KeepsWhatACallbackThrowsInside) {
    const Request request = makeRequest();
    Run run;
    const auto complete = [](qv_response* response, void*) {
        qv_response_release(response);
        throw 1;
    };
    ASSERT_EQ(qv_request_run(request.get(), complete, &run, Run::release, nullptr), QV_OK);
    EXPECT_TRUE(run.released.waitFor());
}

}  // namespace
}  // namespace capitest
