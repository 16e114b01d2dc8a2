#include "Source/Answers.h"
#include "Source/BareCurl.h"
#include "Source/CardRun.h"
#include "Source/PreparationClock.h"
#include "Source/SourceRows.h"
#include "Support/Duel.h"
#include "Support/Inputs.h"
#include "Support/Processors.h"
#include "Support/ScriptedServer.h"

#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace benchmarksupport {

namespace {

using testsupport::ScriptedServer;

constexpr int kThreads = 3;
constexpr int kRounds = 15;

const Input& cardPhotograph() {
    for (const Input& input : inputs()) {
        if (input.file == "jpeg-420-2.jpg") return input;
    }
    throw std::logic_error("no such input");
}

/// Processor time of the whole process, which serves, too, without what preparations took; for each card.
double outsidePreparation(const std::function<Times()>& work, int cards) {
    const double before = preparationSoFar();
    const double whole = work().processor;
    return (whole - (preparationSoFar() - before)) / cards;
}

/// Both sides' threads prepare a picture before each post, since what comes after a preparation finds the processor's
/// caches full of pixels: a post alone takes half of the time.
Row againstBareCurl() {
    constexpr int kCards = 60;
    constexpr double kMostTimesCurl = 1.25;
    const AllProcessors all;
    ScriptedServer server;
    server.forgetBodies();
    server.respond(ScriptedServer::answer(200, ordinaryAnswer()));
    CardRun cards(server.url("/"), readInput(cardPhotograph()));
    BareCurl curl(server.url("/"), cards.preparedBytes(), kThreads, [&] { keep(cards.prepare()); });
    std::vector<double> ours;
    std::vector<double> theirs;
    for (int round = 0; round <= kRounds; ++round) {
        const double mine = outsidePreparation([&] { return cards.run(kCards); }, kCards);
        const double bare = outsidePreparation([&] { return curl.post(kCards); }, kCards);
        if (round == 0) continue;  // connects
        ours.push_back(mine);
        theirs.push_back(bare);
    }
    if (server.connectionCount() != 2 * kThreads) throw std::runtime_error("connections are not reused");
    Row row;
    row.rival = "bare libcurl";
    row.ours = median(ours);
    row.other = median(theirs);
    row.figure = row.ours / row.other;
    row.limit = kMostTimesCurl;
    return row;
}

/// Sixty cards with a server that takes a fifth of a second for each.
Row againstSlowServer() {
    constexpr int kCards = 60;
    static constexpr double kServerSeconds = 0.2;
    constexpr double kMost = 1.05;
    const AllProcessors all;
    ScriptedServer server;
    server.forgetBodies();
    server.handle([](testsupport::ScriptedConnection& connection, const testsupport::ScriptedRequest&) {
        std::this_thread::sleep_for(std::chrono::duration<double>(kServerSeconds));
        connection.write(ScriptedServer::answer(200, ordinaryAnswer()));
    });
    CardRun cards(server.url("/"), readInput(cardPhotograph()));
    Row row;
    row.rival = "20 × (200 ms + one preparation)";
    row.oursOnWall = cards.run(kCards).wall;
    row.ours = row.oursOnWall;
    row.other = kCards / kThreads * (1000 * kServerSeconds + cards.preparationOnWall());
    row.figure = row.ours / row.other;
    row.limit = kMost;
    return row;
}

}  // namespace

void addPipelineRows() {
    addRow("pipeline: a card outside preparation", againstBareCurl);
    addRow("pipeline: 60 cards, slow server", againstSlowServer);
}

}  // namespace benchmarksupport
