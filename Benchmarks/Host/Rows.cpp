#include "Support/Rows.h"

#include "Support/Duel.h"
#include "Support/Photograph.h"
#include "Support/RunProcess.h"
#include "Support/ScriptedServer.h"
#include "Support/TemporaryFolder.h"
#include "Support/TestImages.h"

#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace benchmarksupport {

namespace {

constexpr std::string_view kAnswer =
    "<recoIndex lang=\"en\" objWidth=\"500\" objHeight=\"300\"><item fldType=\"name\" x=\"1\" y=\"2\" w=\"3\" "
    "h=\"4\"><t w=\"87\">Edmund Hartwell</t></item></recoIndex>";

void write(const std::string& path, const qv::Data& data) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(data.data()), static_cast<std::streamsize>(data.size()));
    if (!file) throw std::runtime_error("cannot write " + path);
}

/// Runs it to its end; `std::runtime_error` when it fails.
testsupport::ProcessResult result(const testsupport::ProcessCall& call) {
    auto result = testsupport::runProcess(call);
    if (result.status != 0) throw std::runtime_error("the scan failed: " + result.error);
    return result;
}

/// A call that has a server of its own needs no engine, be it in a process that it starts.
void refuseRecognitionEngine(testsupport::ProcessCall call) {
    call.environment["LD_DEBUG"] = "files";
    const std::string loaded = result(call).error;
    if (loaded.find("libcurl") == std::string::npos) throw std::runtime_error("the loader does not tell what it loads");
    for (const char* library : {"libtesseract", "liblept", "libopencv"}) {
        if (loaded.find(library) != std::string::npos) throw std::runtime_error(std::string(library) + " is loaded");
    }
}

/// From the start of the process to its end; the server answers at once.
Row startUp() {
    constexpr int kRounds = 15;
    constexpr double kMost = 60;
    testsupport::TemporaryFolder folder;
    const std::string card = (folder.path() / "card.jpg").string();
    write(card, makeJPEG(photographOfCard(500, 300)));
    testsupport::ScriptedServer server;
    server.respond(testsupport::ScriptedServer::answer(200, kAnswer));
    testsupport::ProcessCall call;
    call.program = QV_BENCHMARK_PROGRAM;
    call.environment["QVCARDSCAN_TOKEN"] = "token";
    call.arguments = {"scan", card, "--server", server.url("/"), "--json"};
    refuseRecognitionEngine(call);
    std::vector<double> times;
    for (int round = 0; round < kRounds; ++round) {
        const double start = timesSoFar().wall;
        result(call);
        times.push_back(timesSoFar().wall - start);
    }
    Row row;
    row.kind = "value";
    row.ours = row.oursOnWall = row.figure = median(times);
    row.limit = kMost;
    return row;
}

}  // namespace

void addRows() {
    addRow("start-up: scan of a small card, outside server", startUp);
}

}  // namespace benchmarksupport
