#include "CardReader.h"
#include "Server/HTTPServer.h"

#include <CLI/CLI.hpp>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace {

using namespace qv::recognition;

constexpr std::size_t kLongestToken = 4096;

struct Arguments {
    ServerOptions server;
    std::string tokenFile;
    std::string models;
    std::string debugFolder;
    bool isEmbedded = false;
    bool isQuiet = false;
    bool isVerbose = false;
};

int fail(const std::string& message) {
    std::cerr << "qvcardrecod: " << message << '\n';
    return 1;
}

void declare(CLI::App& app, Arguments& arguments) {
    app.set_version_flag("--version", std::string("qvcardrecod ") + QV_VERSION);
    app.add_option("--port", arguments.server.port, "port to listen on, 0 for the system's choice")
        ->capture_default_str();
    app.add_option("--listen", arguments.server.address, "address to listen on")->capture_default_str();
    app.add_option("--token-file", arguments.tokenFile,
                   "file with the token that requests have to carry in their header \"auth\"");
    app.add_option("--workers", arguments.server.workers, "cards read at the same time")
        ->capture_default_str()
        ->check(CLI::Range(1, 64));
    app.add_option("--queue", arguments.server.places, "requests that may wait for a worker")
        ->capture_default_str()
        ->check(CLI::Range(0, 1000));
    app.add_option("--tessdata", arguments.models,
                   "folder of the language models (default: where the system has them)");
    app.add_option("--debug-dir", arguments.debugFolder,
                   "keep the pictures and decisions of every stage there (off by default)");
    app.add_flag("--embedded", arguments.isEmbedded,
                 "serve a parent process: token from standard input, port to standard output");
    auto* quiet = app.add_flag("--quiet", arguments.isQuiet, "say nothing but errors");
    app.add_flag("--verbose", arguments.isVerbose, "say more on standard error")->excludes(quiet);
}

/// The first line of a text, without its end.
std::string firstLine(std::string text) {
    text.erase(std::min(text.find_first_of("\r\n"), text.size()));
    return text;
}

std::optional<std::string> tokenFromFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string line;
    if (!file || !std::getline(file, line) || firstLine(line).empty()) return std::nullopt;
    return firstLine(line);
}

/// Reads byte by byte: what follows the line belongs to nobody, and its end is what is waited for afterwards.
std::optional<std::string> tokenFromParent() {
    std::string line;
    for (char c = 0; line.size() < kLongestToken && ::read(STDIN_FILENO, &c, 1) == 1 && c != '\n';)
        line.push_back(c);
    line = firstLine(line);
    if (line.empty()) return std::nullopt;
    return line;
}

void announce(std::uint16_t port) {
    (void)std::printf("port %u\n", static_cast<unsigned>(port));
    (void)std::fflush(stdout);
}

/// Lets the server be stopped from a thread that may outlive it.
class Stopper {
  public:
    explicit Stopper(HTTPServer& server) : mServer(&server) {}

    void stop() {
        const std::lock_guard lock(mMutex);
        if (mServer != nullptr) mServer->stop();
    }
    void forget() {
        const std::lock_guard lock(mMutex);
        mServer = nullptr;
    }

  private:
    std::mutex mMutex;
    HTTPServer* mServer;
};

/// The parent holds the other end of standard input: when it is gone, however it ended, so is the reason to be here.
void stopWithParent(std::shared_ptr<Stopper> stopper) {
    std::thread([stopper = std::move(stopper)] {
        char rest[256];
        while (::read(STDIN_FILENO, rest, sizeof rest) > 0) {
        }
        stopper->stop();
    }).detach();
}

std::string takeToken(Arguments& arguments) {
    if (!arguments.isEmbedded && arguments.tokenFile.empty()) return {};
    const auto token = arguments.isEmbedded ? tokenFromParent() : tokenFromFile(arguments.tokenFile);
    if (!token) {
        return arguments.isEmbedded ? "no token on standard input; with --embedded its first line has to be the token"
                                    : "no token in " + arguments.tokenFile + "; its first line has to be the token";
    }
    arguments.server.token = *token;
    return {};
}

int serve(Arguments& arguments) {
    const std::filesystem::path models =
        arguments.models.empty() ? installedModels() : std::filesystem::path(arguments.models);
    if (!isInstalled(models, "eng")) {
        return fail("no English language model (eng.traineddata) in " +
                    (models.empty() ? "the usual folders" : models.string()) +
                    "; install the package tesseract-ocr-eng or name a folder with --tessdata");
    }
    if (const std::string problem = takeToken(arguments); !problem.empty()) return fail(problem);
    if (arguments.isEmbedded) {
        arguments.server.address = "127.0.0.1";
        arguments.server.port = 0;
    }
    const bool isQuiet = arguments.isQuiet;
    const auto log = [isQuiet](std::string_view line) {
        if (!isQuiet) (void)std::fprintf(stderr, "qvcardrecod: %.*s\n", static_cast<int>(line.size()), line.data());
    };
    CardReader::Options reader;
    reader.models = models;
    reader.debugFolder = arguments.debugFolder;
    std::string error;
    const auto server = HTTPServer::listen(
        arguments.server, [reader] { return CardReader::open(reader); }, log, error);
    if (!server)
        return fail("cannot listen on " + arguments.server.address + " port " + std::to_string(arguments.server.port) +
                    ": " + error);
    if (arguments.isVerbose) log("models from " + models.string());
    if (!arguments.isEmbedded)
        log("listening on " + arguments.server.address + " port " + std::to_string(server->port()));
    server->stopOnSignals();
    announce(server->port());
    const auto stopper = std::make_shared<Stopper>(*server);
    if (arguments.isEmbedded) stopWithParent(stopper);
    const bool ended = server->run();
    stopper->forget();
    // A worker that does not end is not waited for: its picture is lost either way.
    if (!ended) std::_Exit(1);
    return 0;
}

}  // namespace

int main(int argc, char** argv) try {
    (void)std::signal(SIGPIPE, SIG_IGN);
    CLI::App app("Reads business cards: takes JPEG pictures by HTTP POST and answers with what they say, as XML.",
                 "qvcardrecod");
    Arguments arguments;
    declare(app, arguments);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& problem) {
        return app.exit(problem) == 0 ? 0 : 2;
    }
    return serve(arguments);
} catch (const std::exception& problem) {
    return fail(problem.what());
}
