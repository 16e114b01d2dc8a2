#include "CardReader.h"
#include "Program/ServerOptionChecks.h"
#include "Program/ServerToken.h"
#include "Server/HTTPServer.h"

#include <CLI/CLI.hpp>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

namespace {

using namespace qv::recognition;

struct Arguments {
    ServerOptions server;
    std::string tokenFile;
    std::string models;
    std::string debugFolder;
    bool isEmbedded = false;
    bool isQuiet = false;
    bool isVerbose = false;
};

void say(const std::string& message) {
    std::cerr << "qvcardrecod: " << message << '\n';
}

int fail(const std::string& message) {
    say(message);
    return 1;
}

/// The first word that nothing takes; without its value, which may be a secret.
std::string unexpected(const CLI::App& app) {
    const auto words = app.remaining();
    const std::string word = words.empty() ? "" : words.front();
    if (word.starts_with('-')) return "There is no option \"" + word.substr(0, word.find('=')) + "\".";
    return "\"" + word + "\" is not expected: there are only options.";
}

/// Help and version were asked for; everything else is a wrong call.
int answer(const CLI::App& app, const CLI::ParseError& problem) {
    if (problem.get_exit_code() == 0) return app.exit(problem);
    const bool isUnexpected = dynamic_cast<const CLI::ExtrasError*>(&problem) != nullptr;
    const std::string message = isUnexpected ? unexpected(app) : problem.what();
    say(message + (message.ends_with('.') ? "" : ".") + "\nFor help: qvcardrecod --help");
    return 2;
}

constexpr const char* kExamples =
    "Examples:\n"
    "  qvcardrecod --port 8800\n"
    "  qvcardrecod --port 8800 --workers 4 --queue 16 --token-file token\n"
    "  qvcardrecod --port 8800 --debug-dir /tmp/cards --verbose\n"
    "  curl --data-binary @card.jpg http://127.0.0.1:8800/\n"
    "  curl http://127.0.0.1:8800/metrics\n\n"
    "Exit status: 0 ended as asked; 1 it could not serve; 2 wrong call.";

void declareServing(CLI::App& app, Arguments& arguments) {
    app.add_option("--port", arguments.server.port, "Port to listen on; 0, the default, for the system's choice")
        ->option_text("N")
        ->check(objectionToPort);
    app.add_option("--listen", arguments.server.address, "Address to listen on (default: 127.0.0.1)")
        ->option_text("ADDRESS");
    app.add_option("--token-file", arguments.tokenFile,
                   "File with the token that requests have to carry in their header \"auth\"")
        ->option_text("FILE");
    app.add_option("--workers", arguments.server.workers, "Cards read at the same time, up to 64 (default: 1)")
        ->option_text("N")
        ->check(CLI::Range(1, 64));
    app.add_option("--queue", arguments.server.places, "Requests that may wait for a worker, up to 1000 (default: 8)")
        ->option_text("N")
        ->check(CLI::Range(0, 1000));
}

void declare(CLI::App& app, Arguments& arguments) {
    app.get_formatter()->column_width(22);
    app.get_formatter()->label("OPTIONS", "OPTION…");
    app.footer(kExamples);
    app.set_help_flag("-h,--help", "Show this help");
    app.set_version_flag("--version", std::string("qvcardrecod ") + QV_VERSION, "Show the version");
    declareServing(app, arguments);
    app.add_option("--tessdata", arguments.models, "Folder of the language models (default: where the system has them)")
        ->option_text("DIR");
    app.add_option("--debug-dir", arguments.debugFolder, "Keep the pictures and decisions of every stage there")
        ->option_text("DIR");
    app.add_flag("--embedded", arguments.isEmbedded,
                 "Serve a parent process: token from standard input, port to standard output");
    auto* quiet = app.add_flag("--quiet", arguments.isQuiet, "Say nothing but errors")->option_text(" ");
    app.add_flag("--verbose", arguments.isVerbose, "Say more on standard error")->option_text(" ")->excludes(quiet);
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

/// Why requests could not be asked for the token that the arguments tell of; empty when they can, or need none.
std::string takeToken(Arguments& arguments) {
    if (!arguments.isEmbedded && arguments.tokenFile.empty()) return {};
    ServerToken taken = arguments.isEmbedded ? ServerToken::fromParent() : ServerToken::fromFile(arguments.tokenFile);
    arguments.server.token = std::move(taken.token);
    return taken.problem;
}

/// Why the server cannot do what the arguments ask for.
std::string prepare(Arguments& arguments) {
    if (std::string problem = takeToken(arguments); !problem.empty()) return problem;
    if (arguments.isEmbedded) {
        arguments.server.address = "127.0.0.1";
        arguments.server.port = 0;
    }
    return arguments.debugFolder.empty() ? "" : objectionToDebugFolder(arguments.debugFolder);
}

int serve(Arguments& arguments) {
    const std::filesystem::path models =
        arguments.models.empty() ? installedModels() : std::filesystem::path(arguments.models);
    if (!isInstalled(models, "eng")) {
        return fail("no English language model (eng.traineddata) in " +
                    (models.empty() ? "the usual folders" : models.string()) +
                    "; install the package tesseract-ocr-eng or name a folder with --tessdata");
    }
    if (const std::string problem = prepare(arguments); !problem.empty()) return fail(problem);
    // Also for those who want nothing but errors: this may become one.
    if (const std::string warning = warningAbout(arguments.server); !warning.empty()) say(warning);
    if (!arguments.debugFolder.empty()) say("Warning: every card is kept in " + arguments.debugFolder + ".");
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
        return answer(app, problem);
    }
    return serve(arguments);
} catch (const std::exception& problem) {
    return fail(problem.what());
}
