// Stands in for the recognition server: started, spoken to and ended like it, it answers each picture as the folder in
// FAKE_RECOD says:
//   mode        what goes wrong: "ends" or "garbage" instead of a port, "dies" once when the first picture comes,
//               "interrupts" its parent then, as Ctrl-C would; a number behind these two means another picture than
//               the first; "chokes" dies of every picture of more than 20000 bytes
//   answer.xml  the answer to every picture
// and notes there what it was sent (`requests`, a line each) and how often it was started (`starts`).
#include "Support/ScriptedServer.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>

namespace {

std::filesystem::path folder() {
    const char* name = std::getenv("FAKE_RECOD");
    return name != nullptr ? name : ".";
}

std::string contents(const std::string& name) {
    std::ifstream file(folder() / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void appendLine(const std::string& name, const std::string& line) {
    std::ofstream(folder() / name, std::ios::app) << line << '\n';
}

void answerPicture(testsupport::ScriptedConnection& connection, const testsupport::ScriptedRequest& request,
                   const std::string& token) {
    std::istringstream mode(contents("mode"));
    std::string word;
    int turn = 1;
    mode >> word >> turn;
    static std::atomic<int> pictures{0};
    const bool isTurn = ++pictures == std::max(turn, 1);
    if (word == "chokes" && request.body.size() > 20000) ::_exit(70);
    if (word == "dies" && isTurn) {
        std::filesystem::remove(folder() / "mode");
        ::_exit(70);
    }
    if (word == "interrupts" && isTurn) {
        ::kill(::getppid(), SIGINT);
        return connection.waitUntilClosed();
    }
    const bool knowsToken = !token.empty() && request.header("auth") == token;
    appendLine("requests", (knowsToken ? "token right" : "token wrong") + std::string(" language ") +
                               request.header("content-language").value_or("-") + " bytes " +
                               std::to_string(request.body.size()));
    connection.write(
        testsupport::ScriptedServer::answer(knowsToken ? 200 : 401, knowsToken ? contents("answer.xml") : ""));
}

/// Whether it was given what is meant for the program that started it: secrets may be among it.
bool seesOwnVariables() {
    for (char** entry = environ; *entry != nullptr; ++entry) {
        if (std::string(*entry).starts_with("QVCARDSCAN_")) return true;
    }
    return false;
}

}  // namespace

int main(int count, char** arguments) {
    std::string token;
    std::getline(std::cin, token);
    std::string call;
    for (int i = 1; i < count; ++i)
        call.append(i > 1 ? " " : "").append(arguments[i]);
    appendLine("starts", call);
    appendLine("own-variables", seesOwnVariables() ? "seen" : "hidden");
    const std::string mode = contents("mode");
    if (mode == "ends") return 1;
    testsupport::ScriptedServer server;
    server.handle([token](auto& connection, const auto& request) { answerPicture(connection, request, token); });
    std::cout << (mode == "garbage" ? "hello" : "port " + std::to_string(server.port())) << std::endl;
    std::string rest;
    while (std::getline(std::cin, rest)) {
    }
    appendLine("starts", "ended in good order");
    return 0;
}
