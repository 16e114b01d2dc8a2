#pragma once

#include "Support/Gate.h"
#include "Support/ReadFile.h"
#include "Support/ScriptedServer.h"
#include "Support/TestSupport.h"
#include "qvcardscan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>

namespace capitest {

inline constexpr const char* kAnswer =
    "<recoIndex lang=\"en\"><item fldType=\"name\" x=\"10\" y=\"20\" w=\"100\" h=\"25\"><t w=\"90\">ADA "
    "EXAMPLE</t></item>"
    "<item fldType=\"email\"><t w=\"80\">ada@example.com</t></item>"
    "<item fldType=\"phone\"><t w=\"70\">+1 202 555 0142</t></item>"
    "<item fldType=\"title\"><t w=\"60\">Ingenieurin für Öl</t></item></recoIndex>";

inline std::string picture() {
    return testsupport::testsFolder() / "Host/Data/front.jpg";
}

/// Handles that release themselves.
using Request = std::unique_ptr<qv_request, decltype(&qv_request_release)>;
using Response = std::unique_ptr<qv_response, decltype(&qv_response_release)>;
using Error = std::unique_ptr<qv_error, decltype(&qv_error_release)>;
using SearchResult = std::unique_ptr<qv_search_result, decltype(&qv_search_result_release)>;

inline Error own(qv_error* error) {
    return {error, qv_error_release};
}

inline std::string textOf(const char* text) {
    return text != nullptr ? text : "(null)";
}

/// A host of the C interface, with a server that answers each card alike.
class CardHost : public testing::Test {
  protected:
    CardHost() { mServer.respond(testsupport::ScriptedServer::answer(200, kAnswer)); }
    ~CardHost() override {
        qv_set_main_executor(nullptr, nullptr);
        qv_use_system_log();
        qv_set_server_url(nullptr, nullptr);
        qv_set_search_credentials(nullptr, nullptr, nullptr);
        qv_set_contacts_folder(nullptr, nullptr);
        qv_set_search_time_out(4);
    }
    void SetUp() override { ASSERT_EQ(qv_set_server_url(mServer.url().c_str(), nullptr), QV_OK); }

    /// A request that can run.
    static Request makeRequest(const std::string& noteUUID = "a-note") {
        Request request(qv_request_create(noteUUID.c_str()), qv_request_release);
        EXPECT_EQ(qv_request_add_picture_file(request.get(), picture().c_str(), "a-hash", nullptr), QV_OK);
        EXPECT_EQ(qv_request_set_token(request.get(), "a-token", nullptr), QV_OK);
        return request;
    }

    /// What one run came to; for the interface's user data.
    struct Run {
        qv_response* response = nullptr;
        int completions = 0;
        std::atomic<int> releases{0};
        testsupport::Gate released;

        static void complete(qv_response* response, void* data) {
            auto& run = *static_cast<Run*>(data);
            run.response = response;
            ++run.completions;
        }
        static void release(void* data) {
            auto& run = *static_cast<Run*>(data);
            ++run.releases;
            run.released.open();
        }
        qv_status start(qv_request* request, qv_error** error = nullptr) {
            return qv_request_run(request, complete, this, release, error);
        }
    };

    /// Runs the request to its end.
    static Response respond(qv_request* request) {
        Run run;
        EXPECT_EQ(run.start(request), QV_OK);
        EXPECT_TRUE(run.released.waitFor());
        EXPECT_EQ(run.completions, 1);
        EXPECT_EQ(run.releases, 1);
        return {run.response, qv_response_release};
    }

    testsupport::ScriptedServer mServer;
};

}  // namespace capitest
