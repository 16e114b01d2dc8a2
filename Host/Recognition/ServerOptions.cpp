#include "Recognition/ServerOptions.h"

#include "Recognition/AuthToken.h"
#include "Recognition/EmbeddedServer.h"
#include "Recognition/RemoteServer.h"
#include "Support/HostLog.h"

#include <CLI/CLI.hpp>

#include <utility>

namespace qvhost {
namespace {

std::string objectionToLanguage(const std::string& language) {
    constexpr const char* kAllowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-";
    const bool isTag = !language.empty() && language.size() <= 35 && language.front() != '-' &&
                       language.find_first_not_of(kAllowed) == std::string::npos;
    return isTag ? "" : "a tag of letters, digits and hyphens is needed here, such as de or zh-Hant.";
}

std::string objectionToEmpty(const std::string& text) {
    return text.empty() ? "a name is needed here, not an empty text." : "";
}

}  // namespace

void ServerOptions::describe(CLI::App& command) {
    command.add_option("--language", mLanguage, "Language on cards, such as en or de (default: en)")
        ->type_name("L")
        ->check(objectionToLanguage);
    mServer = command.add_option("--server", mServerURL, "Recognition server instead of the embedded one");
    mServer->type_name("URL")->check(RemoteServer::objectionTo);
    command
        .add_option("--token-file", mTokenFile,
                    std::string("File with its token (or set ") + AuthToken::kVariable + ")")
        ->type_name("F")
        ->needs(mServer)
        ->check(objectionToEmpty);
    command.add_option("--recognizer", mRecognizer, "Program to run as the embedded server")->group("");
}

Result<std::unique_ptr<RecognitionServer>> ServerOptions::open(int workers) const {
    if (!mServerURL) {
        EmbeddedServer::Options options;
        if (mRecognizer) options.program = *mRecognizer;
        options.workers = workers;
        options.isVerbose = HostLog::isWanted();
        return std::unique_ptr<RecognitionServer>(std::make_unique<EmbeddedServer>(std::move(options)));
    }
    Result<std::string> token = AuthToken::read(mTokenFile);
    if (!token) return token.failure();
    return std::unique_ptr<RecognitionServer>(std::make_unique<RemoteServer>(ServerAccess{*mServerURL, *token}));
}

}  // namespace qvhost
