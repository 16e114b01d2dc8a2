#pragma once

#include "Recognition/RecognitionServer.h"
#include "Support/ChildProcess.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qvhost {

/// The recognition server of our own, run as a child on a loopback port of the system's choice. It is given a fresh
/// secret through a pipe each time it starts, and ends with this object. One thread at a time.
class EmbeddedServer : public RecognitionServer {
  public:
    struct Options {
        /// The server to run instead of the one found beside this program or in PATH.
        std::optional<std::filesystem::path> program;
        /// How many cards it reads at the same time; each costs a recognition engine.
        int workers = 1;
        /// Whether it writes what it does to standard error, which it shares.
        bool isVerbose = false;
    };

    explicit EmbeddedServer(Options options) : mOptions(std::move(options)) {}

    Result<ServerAccess> access() override;
    bool hasEnded() override;
    std::string name() const override { return "the embedded recognition server"; }

  private:
    Result<ServerAccess> start();
    std::vector<std::string> arguments() const;

    Options mOptions;
    std::unique_ptr<ChildProcess> mProcess;
    ServerAccess mAccess;
};

}  // namespace qvhost
