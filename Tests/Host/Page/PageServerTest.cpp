#include "Page/CardPile.h"
#include "Page/PageDesk.h"
#include "Page/PageServer.h"
#include "Page/PileReader.h"
#include "Page/PileSaver.h"
#include "Recognition/RemoteServer.h"
#include "Support/HostProgram.h"
#include "Support/ReadFile.h"
#include "Support/ScriptedServer.h"
#include "Support/TemporaryFolder.h"

#include <boost/asio/connect.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <thread>

namespace qvhost {
namespace {

namespace asio = boost::asio;
using nlohmann::json;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using testsupport::hostData;
using testsupport::readFile;
using testsupport::ScriptedServer;

const std::string kKey = "a-key-for-this-test-only";

/// The whole page without a browser: bytes go in, bytes come out.
class PageOverHTTP : public testing::Test {
  protected:
    void start(PageServerLimits limits = {}) {
        mRecogniser.respond(ScriptedServer::answer(200, readFile(hostData("front.xml"))));
        std::string error;
        mServer = PageServer::listen("127.0.0.1", 0, limits, error);
        ASSERT_NE(mServer, nullptr) << error;
        mDesk.emplace(PageGate(PageKey(kKey), mServer->port(), /*isForNetwork=*/false), mPile, *mShelf, mSaver);
        mThread = std::thread([this] { mServer->run(*mDesk); });
    }

    ~PageOverHTTP() override {
        if (mServer) mServer->stop();
        if (mThread.joinable()) mThread.join();
        mPile.stop();
    }

    asio::ip::tcp::socket connect() {
        asio::ip::tcp::socket socket(mContext);
        socket.connect({asio::ip::make_address("127.0.0.1"), mServer->port()});
        return socket;
    }

    static std::string readToEnd(asio::ip::tcp::socket& socket) {
        std::string answer;
        boost::system::error_code error;
        asio::read(socket, asio::dynamic_buffer(answer), error);
        return answer;
    }

    /// The answer to these bytes, on a connection of their own that the server ends.
    std::string send(const std::string& bytes) {
        auto socket = connect();
        boost::system::error_code error;
        asio::write(socket, asio::buffer(bytes), error);
        return readToEnd(socket);
    }

    std::string host() const { return "127.0.0.1:" + std::to_string(mServer->port()); }

    std::string request(const std::string& method, const std::string& below, const std::string& body = "",
                        const std::string& type = "application/json") const {
        std::string text = method + " " + PageKey(kKey).folder() + below + " HTTP/1.1\r\nHost: " + host() +
                           "\r\nConnection: close\r\nCookie: qvcardscan=" + kKey + "\r\n";
        if (!body.empty())
            text += "Content-Type: " + type + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n";
        return text + "\r\n" + body;
    }

    static std::string bodyOf(const std::string& answer) { return answer.substr(answer.find("\r\n\r\n") + 4); }
    json ask(const std::string& method, const std::string& below, const std::string& body = "",
             const std::string& type = "application/json") {
        const std::string answer = send(request(method, below, body, type));
        return json::parse(bodyOf(answer), nullptr, /*allow_exceptions=*/false);
    }

    std::string addPicture(const std::string& name = "front.jpg") {
        return ask("POST", "api/pictures?name=" + name, readFile(hostData(name)), "image/jpeg").value("id", "");
    }

    /// A card that was read.
    std::string addCard() {
        const std::string card =
            ask("POST", "api/cards", json{{"pictures", {addPicture()}}}.dump()).value("id", std::string());
        json list = ask("GET", "api/cards?seen=0");
        while (list["done"] != list["total"])
            list = ask("GET", "api/cards?run=" + list["run"].get<std::string>() +
                                  "&seen=" + std::to_string(list["version"].get<int>()));
        return card;
    }

    testsupport::TemporaryFolder mFolder;
    ScriptedServer mRecogniser;
    RemoteServer mRemote{ServerAccess{mRecogniser.url(), "t"}};
    std::unique_ptr<PictureShelf> mShelf = std::move(*PictureShelf::make(std::uint64_t{8} << 20));
    CardPile mPile{*mShelf};
    PileSaver mSaver{mPile, AddressBookPlace::folder(mFolder.path())};
    std::unique_ptr<PageServer> mServer;
    std::optional<PageDesk> mDesk;
    asio::io_context mContext;
    std::thread mThread;
    // Last, because it ends only when the pile is stopped, which the destructor above does.
    std::unique_ptr<PileReader> mReader;
};

class PageAtWork : public PageOverHTTP {
  protected:
    PageAtWork() {
        start();
        mReader = std::make_unique<PileReader>(mPile, mRemote, std::nullopt);
    }
};

class PageAtTheDoor : public PageOverHTTP {
  protected:
    PageAtTheDoor() { start(); }
};

TEST_F(PageAtTheDoor, RefusesInOneWayWithoutAWord) {
    const std::string own = PageKey(kKey).folder();
    const std::string cookie = "Cookie: qvcardscan=" + kKey + "\r\n";
    const std::string end = "Connection: close\r\n\r\n";
    const std::string requests[] = {
        "GET / HTTP/1.1\r\nHost: " + host() + "\r\n" + end,
        "GET /?key=wrong HTTP/1.1\r\nHost: " + host() + "\r\n" + end,
        "GET /favicon.ico HTTP/1.1\r\nHost: " + host() + "\r\n" + end,
        "GET /?key=" + kKey + " HTTP/1.1\r\nHost: evil.example\r\n" + end,
        "GET /?key=" + kKey + " HTTP/1.1\r\n" + end,
        "GET /?key=" + kKey + " HTTP/1.1\r\nHost: " + host() + "\r\nHost: evil.example\r\n" + end,
        "GET http://evil.example/?key=" + kKey + " HTTP/1.1\r\nHost: " + host() + "\r\n" + end,
        "GET " + own + "api/cards HTTP/1.1\r\nHost: " + host() + "\r\n" + end,
        "GET " + own + "api/cards HTTP/1.1\r\nHost: " + host() + "\r\nOrigin: http://evil.example\r\n" + cookie + end,
        "GET " + own + "api/cards HTTP/1.1\r\nHost: " + host() + "\r\nSec-Fetch-Site: same-site\r\n" + cookie + end,
        "GET " + own + "../../etc/passwd HTTP/1.1\r\nHost: evil.example\r\n" + end,
        "OPTIONS " + own + "api/cards HTTP/1.1\r\nHost: " + host() + "\r\nOrigin: http://evil.example\r\n" + end,
    };
    for (const std::string& text : requests) {
        const std::string answer = send(text);
        EXPECT_THAT(answer, StartsWith("HTTP/1.1 403 ")) << text;
        EXPECT_EQ(bodyOf(answer), "") << text;
        EXPECT_THAT(answer, Not(HasSubstr("Access-Control")));
    }
}

TEST_F(PageAtTheDoor, TheKeyGivesTheCookieAndLeavesTheAddress) {
    const std::string answer =
        send("GET /?key=" + kKey + " HTTP/1.1\r\nHost: " + host() + "\r\nConnection: close\r\n\r\n");
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 303 "));
    EXPECT_THAT(answer, HasSubstr("Location: " + PageKey(kKey).folder() + "\r\n"));
    EXPECT_THAT(answer, HasSubstr("Set-Cookie: " + PageKey(kKey).cookie() + "\r\n"));
}

TEST_F(PageAtTheDoor, EveryAnswerTellsTheBrowserWhatItMayNot) {
    for (const std::string& answer : {send(request("GET", "")), send(request("GET", "api/cards?seen=0")),
                                      send(request("GET", "nothing")), send("GET / HTTP/1.1\r\nHost: x\r\n\r\n")}) {
        for (const char* header :
             {"Cache-Control: no-store\r\n", "X-Content-Type-Options: nosniff\r\n", "Referrer-Policy: no-referrer\r\n",
              "Cross-Origin-Resource-Policy: same-origin\r\n", "X-Frame-Options: DENY\r\n",
              "Content-Security-Policy: default-src 'none'; script-src 'self'; style-src 'self'; "})
            EXPECT_THAT(answer, HasSubstr(header));
        EXPECT_THAT(answer, Not(HasSubstr("unsafe")));
    }
}

TEST_F(PageAtTheDoor, PathsLeadNowhereElse) {
    for (const char* path : {"../etc/passwd", "..%2f..%2fetc/passwd", "/etc/passwd", "index.html", "main.js/..",
                             "api/../main.js", "api/pictures/../../../etc/passwd/view", "api/pictures/..%2f..%2fx/view",
                             "api/cards/%2e%2e/note", "api/", "api//", "api/cards/1/note"}) {
        const std::string answer = send(request("GET", path));
        EXPECT_THAT(answer, StartsWith("HTTP/1.1 404 ")) << path;
        EXPECT_THAT(answer, Not(HasSubstr("root:"))) << path;
    }
}

TEST_F(PageAtTheDoor, WhatIsNoRequestIsAnsweredAndEnded) {
    for (const char* text :
         {"hello\r\n\r\n", "GET\r\n\r\n", "GET / HTTP/9.9\r\n\r\n", "\x16\x03\x01\x02\x03\x04\x05\r\n\r\n",
          "GET / HTTP/1.1\r\nHost\r\n\r\n", "GET / HTTP/1.1\r\nContent-Length: -1\r\n\r\n",
          "POST / HTTP/1.1\r\nContent-Length: 1\r\nContent-Length: 2\r\n\r\n"})
        EXPECT_THAT(send(text), StartsWith("HTTP/1.1 400 ")) << text;
    EXPECT_THAT(send("GET / HTTP/1.1\r\nX: " + std::string(20000, 'x') + "\r\n\r\n"), StartsWith("HTTP/1.1 431 "));
}

TEST_F(PageAtTheDoor, BodiesAreRefusedBeforeTheyAreTaken) {
    const auto head = [this](const std::string& below, const std::string& length) {
        return "POST " + PageKey(kKey).folder() + below + " HTTP/1.1\r\nHost: " + host() +
               "\r\nCookie: qvcardscan=" + kKey + "\r\nConnection: close\r\n" + length + "\r\n";
    };
    const std::string large = "Content-Length: " + std::to_string((64 << 20) + 1) + "\r\n";
    EXPECT_THAT(send(head("api/pictures?name=x", large)), StartsWith("HTTP/1.1 413 "));
    EXPECT_THAT(send(head("api/cards", "Content-Length: 300000\r\n")), StartsWith("HTTP/1.1 413 "));
    EXPECT_THAT(send(head("api/cards", "Content-Length: 99999999999999999999\r\n")), StartsWith("HTTP/1.1 4"));
    EXPECT_THAT(send(head("api/pictures?name=x", "Transfer-Encoding: chunked\r\n")), StartsWith("HTTP/1.1 411 "));
    EXPECT_THAT(send("POST / HTTP/1.1\r\nHost: " + host() + "\r\nContent-Length: 1000000\r\n\r\n"),
                StartsWith("HTTP/1.1 403 "));
}

TEST_F(PageAtTheDoor, WhatIsNoJSONOrNotCalledSoChangesNothing) {
    for (const char* body : {"{", "[]", "{\"pictures\":1}", "{\"pictures\":[]}", "{\"pictures\":[1]}", "\"x\"", "null"})
        EXPECT_THAT(send(request("POST", "api/cards", body)), StartsWith("HTTP/1.1 4")) << body;
    EXPECT_THAT(send(request("POST", "api/cards", "{\"pictures\":[\"x\"]}", "text/plain")),
                StartsWith("HTTP/1.1 400 "));
    EXPECT_EQ(ask("GET", "api/cards?seen=0")["cards"], json::array());
    const std::string deep(100000, '[');
    EXPECT_THAT(send(request("POST", "api/pairs", deep)), StartsWith("HTTP/1.1 200 "));
}

class PageWithinBounds : public PageOverHTTP {};

TEST_F(PageWithinBounds, ASlowClientIsCutOffAndNobodyWaitsForIt) {
    start({.headerTime = std::chrono::milliseconds(100), .bodyTime = std::chrono::milliseconds(100)});
    auto slowHead = connect();
    asio::write(slowHead, asio::buffer(std::string("GET / HT")));
    auto slowBody = connect();
    const std::string whole = request("POST", "api/cards", "{\"pictures\":[]}");
    asio::write(slowBody, asio::buffer(whole.substr(0, whole.size() - 3)));
    EXPECT_THAT(send(request("GET", "api/cards?seen=0")), StartsWith("HTTP/1.1 200 "));
    EXPECT_EQ(readToEnd(slowHead), "");
    EXPECT_EQ(readToEnd(slowBody), "");
}

TEST_F(PageWithinBounds, BodiesTogetherStayWithinTheMemory) {
    start({.bodies = 1000});
    auto first = connect();
    const std::string head = "POST " + PageKey(kKey).folder() + "api/pictures?name=a HTTP/1.1\r\nHost: " + host() +
                             "\r\nCookie: qvcardscan=" + kKey + "\r\nContent-Length: 700\r\n\r\n";
    asio::write(first, asio::buffer(head));
    // The first one has its place once the second is refused for want of one.
    std::string second;
    while (second.empty() || second.starts_with("HTTP/1.1 422"))
        second = send(request("POST", "api/pictures?name=b", std::string(700, 'x'), "image/jpeg"));
    EXPECT_THAT(second, StartsWith("HTTP/1.1 503 "));
    first.close();
    std::string third;
    while (third.empty() || third.starts_with("HTTP/1.1 503"))
        third = send(request("POST", "api/pictures?name=c", std::string(700, 'x'), "image/jpeg"));
    EXPECT_THAT(third, StartsWith("HTTP/1.1 422 ")) << "the place is free again, and these bytes are no picture";
}

TEST_F(PageWithinBounds, SoManyConnectionsAndNoMore) {
    start({.connections = 2});
    auto one = connect();
    auto other = connect();
    // Both are known to be served once they were answered.
    const std::string ask = "GET / HTTP/1.1\r\nHost: x\r\n\r\n";
    char byte = 0;
    for (auto* socket : {&one, &other}) {
        asio::write(*socket, asio::buffer(ask));
        asio::read(*socket, asio::buffer(&byte, 1));
    }
    EXPECT_EQ(send(ask), "");
    one.close();
    std::string answer;
    while (answer.empty())
        answer = send("GET / HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n");
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 403 "));
}

TEST_F(PageAtWork, ACardIsReadCorrectedAndShown) {
    const std::string card = addCard();
    json whole = ask("GET", "api/cards/" + card);
    EXPECT_EQ(whole["state"], "done");
    EXPECT_EQ(whole["title"], "Ada Example");
    ASSERT_EQ(whole["fields"].size(), 5U);
    EXPECT_EQ(whole["fields"][0]["kind"], "name");
    EXPECT_EQ(whole["fields"][0]["frame"], json({1.5, 2.25, 30, 8}));
    EXPECT_EQ(whole["pictures"][0]["unitsWide"], 120);
    EXPECT_EQ(whole["pictures"][0]["isRead"], true);
    whole = ask("PATCH", "api/cards/" + card + "/fields/1", R"({"text":"o'neill <&> \u0007x"})");
    EXPECT_EQ(whole["fields"][0]["text"], "o'neill <&> x") << "as typed, without what no markup can hold";
    EXPECT_TRUE(whole["fields"][0]["isCorrected"]);
    const std::string note = send(request("GET", "api/cards/" + card + "/note"));
    EXPECT_THAT(note, HasSubstr("o&apos;neill &lt;&amp;&gt; x"));
    EXPECT_THAT(note, HasSubstr("Content-Security-Policy: sandbox allow-popups"));
    EXPECT_THAT(note, HasSubstr("X-Frame-Options: SAMEORIGIN"));
    EXPECT_THAT(send(request("GET", "api/cards/" + card + "/contact.vcf")), HasSubstr("FN:o'neill <&> x"));
}

TEST_F(PageAtWork, CorrectionsThatCannotBeAreRefused) {
    const std::string card = addCard();
    const std::string fields = "api/cards/" + card + "/fields";
    EXPECT_THAT(send(request("PATCH", fields + "/99", R"({"text":"x"})")), StartsWith("HTTP/1.1 409 "));
    EXPECT_THAT(send(request("PATCH", fields + "/x", R"({"text":"x"})")), StartsWith("HTTP/1.1 409 "));
    EXPECT_THAT(send(request("PATCH", fields + "/1", R"({"kind":"salary"})")), StartsWith("HTTP/1.1 400 "));
    EXPECT_THAT(send(request("PATCH", fields + "/1", R"({"text":7})")), StartsWith("HTTP/1.1 400 "));
    EXPECT_THAT(send(request("PATCH", fields + "/1", json{{"text", std::string(2001, 'x')}}.dump())),
                StartsWith("HTTP/1.1 409 "));
    EXPECT_THAT(send(request("PATCH", fields + "/1", "{\"text\":\"\xFF\"}")), StartsWith("HTTP/1.1 400 "));
    EXPECT_THAT(send(request("POST", fields, R"({"text":"x"})")), StartsWith("HTTP/1.1 400 "));
    EXPECT_THAT(send(request("DELETE", fields + "/99")), StartsWith("HTTP/1.1 409 "));
    EXPECT_EQ(ask("GET", "api/cards/" + card)["fields"].size(), 5U);
}

TEST_F(PageAtWork, AFieldsNumberNeverComesTwice) {
    const std::string card = addCard();
    const std::string fields = "api/cards/" + card + "/fields";
    ask("DELETE", fields + "/5");
    const json whole = ask("POST", fields, R"({"kind":"fax","text":"1"})");
    EXPECT_EQ(whole["fields"].back()["id"], 6);
    EXPECT_TRUE(whole["fields"].back()["side"].is_null());
}

TEST_F(PageAtWork, ACardIsSavedAndSaysWhere) {
    const std::string card = addCard();
    EXPECT_EQ(ask("POST", "api/cards/" + card + "/save", "{}")["saving"], "underway");
    json whole;
    do {
        whole = ask("GET", "api/cards/" + card);
    } while (whole["saving"] == "underway");
    EXPECT_EQ(whole["saving"], "done");
    EXPECT_TRUE(whole["saved"]["isNew"]);
    EXPECT_THAT(whole["saved"]["where"].get<std::string>(), StartsWith(mFolder.path().string()));
}

TEST_F(PageAtWork, RemovedCardsComeBackWithTheirCorrections) {
    const std::string card = addCard();
    ask("PATCH", "api/cards/" + card + "/fields/1", R"({"text":"Grace"})");
    EXPECT_THAT(send(request("DELETE", "api/cards/" + card)), StartsWith("HTTP/1.1 204 "));
    EXPECT_THAT(send(request("GET", "api/cards/" + card)), StartsWith("HTTP/1.1 404 "));
    EXPECT_EQ(ask("POST", "api/cards/" + card + "/restore", "{}")["title"], "Grace");
    EXPECT_THAT(send(request("POST", "api/cards/" + card + "/restore", "{}")), StartsWith("HTTP/1.1 404 "));
}

TEST_F(PageAtWork, NamesArePairedAndRoomIsLimited) {
    EXPECT_EQ(ask("POST", "api/pairs",
                  R"({"names":["b.jpg","a_2.jpg","a_1.jpg","dir/b.jpg","c-front.png","c-back.png"]})")["cards"],
              json::parse("[[0],[2,1],[3],[4,5]]"));
    // Eight megabytes of room; each picture takes one and a little.
    std::string answer;
    for (int i = 0; i < 8; ++i)
        answer = send(request("POST", "api/pictures?name=a.jpg", readFile(hostData("front.jpg")), "image/jpeg"));
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 507 "));
    EXPECT_THAT(answer, HasSubstr("remove some cards"));
}

TEST_F(PageAtWork, WhoWaitsIsToldOfTheChangeAndOfTheEnd) {
    const json list = ask("GET", "api/cards?seen=0");
    auto waiting = connect();
    asio::write(waiting, asio::buffer(request("GET", "api/cards?run=" + list["run"].get<std::string>() +
                                                         "&seen=" + std::to_string(list["version"].get<int>()))));
    addCard();
    EXPECT_THAT(readToEnd(waiting), HasSubstr("\"state\""));
    const json now = ask("GET", "api/cards?seen=0");
    auto last = connect();
    asio::write(last, asio::buffer(request("GET", "api/cards?run=" + now["run"].get<std::string>() +
                                                      "&seen=" + std::to_string(now["version"].get<int>()))));
    mServer->stop();
    mThread.join();
    // It may have come before or after the end; it is never left hanging.
    const std::string answer = readToEnd(last);
    EXPECT_TRUE(answer.empty() || answer.starts_with("HTTP/1.1 200 "));
}

TEST_F(PageAtTheDoor, AnotherProgramsPortIsSaidToBeTaken) {
    std::string error;
    EXPECT_EQ(PageServer::listen("127.0.0.1", mServer->port(), {}, error), nullptr);
    EXPECT_FALSE(error.empty());
    EXPECT_EQ(PageServer::listen("no address", 0, {}, error), nullptr);
}

}  // namespace
}  // namespace qvhost
