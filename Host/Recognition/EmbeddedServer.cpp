#include "Recognition/EmbeddedServer.h"

#include "Support/ProgramFinder.h"
#include "Support/Random.h"

#include <charconv>
#include <chrono>
#include <string_view>
#include <system_error>

namespace qvhost {
namespace {

constexpr const char* kProgramName = "qvcardrecod";
/// Passwords and keys may be among them, which are none of the server's business.
constexpr const char* kOwnVariables = "QVCARDSCAN_";
constexpr std::chrono::seconds kStartTime{30};
/// A server that crashed in the middle of an answer closes the connection a little before it is gone itself.
constexpr std::chrono::milliseconds kTimeToFall{500};

Failure notStarted(const std::string& why) {
    return {ExitStatus::Incomplete, "The embedded recognition server " + why +
                                        " Install the recognition server again, or name another one with --server."};
}

/// The number in "port N"; nothing for any other line.
std::optional<unsigned> portIn(std::string_view line) {
    constexpr std::string_view kWord = "port ";
    if (!line.starts_with(kWord)) return std::nullopt;
    line.remove_prefix(kWord.size());
    unsigned port = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), port);
    if (error != std::errc() || end != line.data() + line.size() || port == 0 || port > 65535) return std::nullopt;
    return port;
}

}  // namespace

Result<ServerAccess> EmbeddedServer::access() {
    if (mProcess && !mProcess->endsWithin(std::chrono::milliseconds(0))) return mAccess;
    mProcess.reset();
    return start();
}

bool EmbeddedServer::hasEnded() {
    return mProcess && mProcess->endsWithin(kTimeToFall);
}

std::vector<std::string> EmbeddedServer::arguments() const {
    return {"--embedded", "--workers", std::to_string(mOptions.workers), mOptions.isVerbose ? "--verbose" : "--quiet"};
}

Result<ServerAccess> EmbeddedServer::start() {
    const auto program = mOptions.program ? mOptions.program : ProgramFinder::find(kProgramName);
    if (!program)
        return notStarted(std::string("(") + kProgramName + ") was not found beside this program or in PATH.");
    int error = 0;
    auto process = ChildProcess::start(*program, arguments(), kOwnVariables, error);
    if (!process)
        return notStarted("\"" + program->string() + "\" did not start: " + std::system_category().message(error) +
                          ".");
    const std::string token = Random::token();
    const auto line = process->write(token + "\n") ? process->readLine(kStartTime) : std::nullopt;
    const auto port = line ? portIn(*line) : std::nullopt;
    if (!port) {
        const bool ended = process->endsWithin(std::chrono::milliseconds(0));
        return notStarted("\"" + program->string() +
                          (ended ? "\" ended before it was ready." : "\" did not say where it listens."));
    }
    mAccess = {"http://127.0.0.1:" + std::to_string(*port) + "/", token};
    mProcess = std::move(process);
    return mAccess;
}

}  // namespace qvhost
