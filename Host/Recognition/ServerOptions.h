#pragma once

#include "Recognition/RecognitionServer.h"
#include "Support/Result.h"

#include <memory>
#include <optional>
#include <string>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace qvhost {

/// The options that choose the recognition server and the language that it reads in.
class ServerOptions {
  public:
    void describe(CLI::App& command);

    /// The server that was chosen; the embedded one reads that many cards at the same time. It is not started yet.
    Result<std::unique_ptr<RecognitionServer>> open(int workers = 1) const;

    const std::optional<std::string>& language() const { return mLanguage; }
    /// `--server`, for options that do not go with it; null before `describe`.
    CLI::Option* server() const { return mServer; }

  private:
    CLI::Option* mServer = nullptr;
    std::optional<std::string> mServerURL;
    std::optional<std::string> mTokenFile;
    std::optional<std::string> mLanguage;
    std::optional<std::string> mRecognizer;
};

}  // namespace qvhost
