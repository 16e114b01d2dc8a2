// What a server answers, as the client sees it through a socket. The first byte says how it is asked; bytes 0x1E part
// the answers to one request and the redirects that follow.

#include "QVPlatform/HTTPClient.h"
#include "Support/Input.h"
#include "Support/Loopback.h"
#include "Support/OnlyOwnPort.h"
#include "Support/Require.h"

using fuzzing::require;

namespace {

constexpr std::size_t kLargestBody = 4096;

/// The server of this run. Ports rest for a minute after a connection, so that each is good for some thousand runs.
fuzzing::AnswerServer& serverOfRun() {
    constexpr std::size_t kRunsPerPort = 8192;
    static std::size_t runs = 0;
    static fuzzing::AnswerServer* server = nullptr;
    if (runs++ % kRunsPerPort == 0) {
        // The one before has a thread that waits for more.
        static std::vector<fuzzing::AnswerServer*> all;
        all.push_back(server = new fuzzing::AnswerServer());
        fuzzing::connectOnlyTo(server->port());
    }
    return *server;
}

qv::HTTPRequest requestOf(std::uint8_t habits, std::uint16_t port) {
    qv::HTTPRequest request{.url = *qv::URL::URLWithString("http://127.0.0.1:" + std::to_string(port) + "/card")};
    request.followsRedirects = (habits & 1) != 0;
    if ((habits & 4) != 0) {
        request.method = "POST";
        request.body = qv::Data{'x'};
    }
    request.headers = {{"auth", "token"}};
    request.maximumBodySize = kLargestBody;
    request.totalSeconds = 3;
    return request;
}

void check(const qv::HTTPResponse& response) {
    require(response.error.has_value() || response.status != 0, "there is an answer or an error");
    require(!response.error || !response.body, "what failed has no body");
    require(!response.body || (!response.body->empty() && response.body->size() <= kLargestBody),
            "a body has bytes, and not too many");
    for (const auto& [name, value] : response.headers) {
        require(name.find_first_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ\r\n") == std::string::npos, "names are in lower case");
        require(value.find_first_of("\r\n") == std::string::npos, "a value is one line");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    if (count == 0) return 0;
    fuzzing::AnswerServer& server = serverOfRun();
    server.play(fuzzing::partsOf(fuzzing::textOf(bytes + 1, count - 1)), /*inPieces=*/(bytes[0] & 2) != 0);
    check(qv::HTTPClient::sendSynchronousRequest(requestOf(bytes[0], server.port())));
    return 0;
}
