#pragma once

#include "Recognition/RemoteServer.h"
#include "Scan/CardScan.h"
#include "Support/HostProgram.h"
#include "Support/ReadFile.h"
#include "Support/ScriptedServer.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace testsupport {

/// The card of Ada Example as a recognition server answers it; with `email` "" there is none on it, and with `company`
/// there is one.
inline std::string recognitionOfAda(const std::string& email = "ada@example.com", const std::string& company = "") {
    const auto item = [](const char* type, const std::string& text) {
        if (text.empty()) return std::string();
        return std::string("<item fldType=\"") + type + R"(" x="1" y="2" w="3" h="4" orient="0"><t w="90">)" + text +
               "</t></item>";
    };
    return "<recoIndex lang=\"en\" objWidth=\"120\" objHeight=\"70\">" + item("name", "Ada Example") +
           item("title", "Engineer") + item("company", company) + item("email", email) +
           item("phone", "+1 202 555 0142") + item("address", "1 Main Street") + "</recoIndex>";
}

/// What the library makes of a card that a server answered so.
inline qvhost::ScanOutcome scanOf(const std::string& answer) {
    ScriptedServer server;
    server.respond(ScriptedServer::answer(200, answer));
    qvhost::RemoteServer remote({server.url("/"), "token"});
    auto pictures = qvhost::CardPicture::readAll({hostData("front.jpg")});
    auto outcome = qvhost::CardScan(remote).run({std::move(*pictures), std::nullopt, /*skipNote=*/false});
    if (!outcome) throw std::runtime_error(outcome.failure().message);
    return std::move(*outcome);
}

}  // namespace testsupport
