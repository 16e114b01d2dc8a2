// What a client sends to the recognition server, through a socket; bytes 0x1E part what arrives at once.

#include "Server/HTTPServer.h"
#include "Support/Input.h"
#include "Support/Loopback.h"
#include "Support/Require.h"

#include <thread>

using fuzzing::require;
using namespace qv::recognition;

namespace {

class Stub final : public Recogniser {
  public:
    Recognition recognise(std::span<const std::uint8_t> jpeg, const std::string& contentLanguage) override {
        Recognition recognition;
        recognition.isPicture = jpeg.size() > 3;
        recognition.xml = "<recoIndex/>";
        recognition.fields = static_cast<int>(contentLanguage.size());
        return recognition;
    }
};

std::uint16_t serverPort() {
    static const std::uint16_t port = [] {
        std::string error;
        ServerOptions options;
        options.token = "secret";
        options.bodyLimit = 4096;
        // What the client has ended is over at once, and not when time is up.
        options.headerTime = options.bodyTime = std::chrono::minutes(5);
        auto server = HTTPServer::listen(
            options, [] { return std::make_unique<Stub>(); }, [](std::string_view) {}, error);
        require(server != nullptr, "the server listens");
        const std::uint16_t chosen = server->port();
        std::thread([kept = std::move(server)] { kept->run(); }).detach();
        return chosen;
    }();
    return port;
}

/// The first answer, behind any "100 Continue".
std::string_view firstAnswer(std::string_view answers) {
    while (answers.starts_with("HTTP/1.1 100 "))
        answers.remove_prefix(answers.find("\r\n\r\n") + 4);
    return answers;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const std::string text = fuzzing::textOf(bytes, count);
    const std::string answers = fuzzing::exchange(serverPort(), fuzzing::partsOf(text));
    const std::string_view answer = firstAnswer(answers);
    if (answer.empty()) return 0;
    require(answer.starts_with("HTTP/1.1 "), "an answer is HTTP");
    const std::string_view head = answer.substr(0, answer.find("\r\n\r\n"));
    if (answer.starts_with("HTTP/1.1 200 ")) return 0;
    require(head.find("Content-Length: 0") != std::string_view::npos, "what is no result has no body");
    return 0;
}
