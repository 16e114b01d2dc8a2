// A recognition server that reads nothing: it answers each picture as the card planned for its token says, or fails as
// planned. Prints "port N" and ends with its standard input, so that nobody has to end it.
#include "Soak/PlannedCard.h"
#include "Support/ScriptedServer.h"
#include "Support/TestImages.h"

#include <csignal>
#include <iostream>
#include <string>

namespace {

using soak::Plan;
using soak::PlannedCard;
using testsupport::ScriptedConnection;
using testsupport::ScriptedRequest;
using testsupport::ScriptedServer;

/// A result that ends in the middle, or what proxies send.
std::string noResult(const PlannedCard& card) {
    if (card.number() % 2 == 0) return "<html><body><p>502 Bad Gateway<br></body></html>";
    const std::string whole = card.frontResult();
    return whole.substr(0, whole.find("fldType"));
}

/// Backs stand upright, fronts lie: so the picture itself says which side it shows.
bool showsBack(const ScriptedRequest& request) {
    const auto facts = testsupport::factsOfJPEG({request.body.begin(), request.body.end()});
    return facts.height > facts.width;
}

std::string bodyFor(const PlannedCard& card, const ScriptedRequest& request) {
    switch (card.plan()) {
        case Plan::NoCard:
            return R"(<recoIndex lang="en" objWidth="1024" objHeight="600"></recoIndex>)";
        case Plan::NoXML:
            return noResult(card);
        case Plan::NoText:
            return "<recoIndex>\xFF\xFE\x80</recoIndex>";
        default:
            return card.hasBack() && showsBack(request) ? card.backResult() : card.frontResult();
    }
}

void answer(ScriptedConnection& connection, const ScriptedRequest& request) {
    const auto number = PlannedCard::numberIn(request.header("auth").value_or(""));
    if (!number) return connection.write(ScriptedServer::answer(401, ""));
    const PlannedCard card(*number);
    if (card.plan() == Plan::Reset) return connection.reset();
    if (request.body.empty()) return connection.write(ScriptedServer::answer(422, ""));
    if (card.plan() == Plan::Unavailable)
        return connection.write(ScriptedServer::answer(503, "", "Retry-After: 1\r\n"));
    connection.write(ScriptedServer::answer(200, bodyFor(card, request)));
}

}  // namespace

int main() {
    (void)std::signal(SIGPIPE, SIG_IGN);
    ScriptedServer server;
    server.forgetBodies();
    server.handle(answer);
    std::cout << "port " << server.port() << std::endl;
    for (std::string line; std::getline(std::cin, line);) {
    }
}
