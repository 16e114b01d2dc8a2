#include "Faults/NetworkFault.h"

#include "Faults/FaultShims.h"
#include "Source/Operation/ScanFixtures.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <utility>

namespace faults {

using testsupport::ScriptedServer;
using testsupport::TLSCertificateOptions;
using testsupport::UntrustedTLSServer;

FaultyServer at(std::string url) {
    FaultyServer faulty;
    faulty.url = std::move(url);
    return faulty;
}

FaultyServer nobody() {
    return at(ScriptedServer().url());
}

FaultyServer answers(ScriptedServer::Handler handler) {
    const auto server = std::make_shared<ScriptedServer>();
    server->forgetBodies();
    server->handle(std::move(handler));
    FaultyServer faulty = at(server->url());
    faulty.server = server;
    return faulty;
}

FaultyServer answers(std::string bytes) {
    return answers(answer::thenEnd(std::move(bytes)));
}

FaultyServer talks(RawServer::Talk talk, const std::string& scheme) {
    const auto server = std::make_shared<RawServer>(std::move(talk));
    FaultyServer faulty = at(scheme + "://" + server->place() + "/");
    faulty.server = server;
    return faulty;
}

FaultyServer fullLine() {
    const std::shared_ptr<RawServer> server = RawServer::withFullLine();
    FaultyServer faulty = at("http://" + server->place() + "/");
    faulty.server = server;
    return faulty;
}

FaultyServer redirectsToItself(int status) {
    return answers(ScriptedServer::answer(status, "", "Location: /again\r\nConnection: close\r\n"));
}

FaultyServer redirectsElsewhere(int status) {
    const auto elsewhere = std::make_shared<ScriptedServer>();
    elsewhere->respond(scans::answer({scans::kName, scans::kTitle, scans::kEmail}));
    // By another name, so that it is another origin and yet on this machine.
    const std::string target = "http://localhost:" + std::to_string(elsewhere->port()) + "/";
    FaultyServer faulty =
        answers(ScriptedServer::answer(status, "", "Location: " + target + "\r\nConnection: close\r\n"));
    faulty.expectAfterwards = [elsewhere] {
        for (const auto& request : elsewhere->requests()) {
            for (const char* secret : {"auth", "authorization", "cookie"})
                EXPECT_EQ(request.header(secret), std::nullopt) << request.head;
            EXPECT_EQ(request.method, "GET") << "a card went elsewhere";
        }
    };
    return faulty;
}

FaultyServer withCertificate(const TLSCertificateOptions& options, bool isTrusted) {
    struct Trusted {
        UntrustedTLSServer server;
        Trusted(const TLSCertificateOptions& certificate, bool trust)
            : server(certificate, scans::answer({scans::kName, scans::kTitle, scans::kEmail})) {
            const std::string bytes = trust ? server.certificate() : "";
            qvFaultsTrust(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
        }
        Trusted(const Trusted&) = delete;
        Trusted& operator=(const Trusted&) = delete;
        ~Trusted() { qvFaultsTrust(nullptr, 0); }
    };
    const auto trusted = std::make_shared<Trusted>(options, isTrusted);
    FaultyServer faulty = at(trusted->server.url());
    faulty.server = trusted;
    faulty.expectAfterwards = [trusted = trusted.get()] {
        EXPECT_EQ(trusted->server.received(), "") << "who cannot be trusted is told nothing";
    };
    return faulty;
}

FaultyServer setsWallClock(long seconds) {
    FaultyServer faulty = answers([seconds](testsupport::ScriptedConnection& connection, const auto&) {
        qvFaultsSetWallClock(seconds);
        connection.write(scans::answer({scans::kName, scans::kTitle, scans::kEmail}));
    });
    faulty.expectAfterwards = [] { qvFaultsSetWallClock(0); };
    return faulty;
}

FaultyServer losesAnHour(std::string bytes) {
    const auto isLost = std::make_shared<std::atomic<bool>>(false);
    return answers([bytes = std::move(bytes), isLost](testsupport::ScriptedConnection& connection, const auto&) {
        constexpr long kHour = 60 * 60;
        connection.write(bytes);
        if (!isLost->exchange(true)) qvFaultsAdvanceSteadyClock(kHour);
        connection.waitUntilClosed();
    });
}

namespace answer {

Handler thenEnd(std::string bytes) {
    return [bytes = std::move(bytes)](ScriptedConnection& connection, const ScriptedRequest&) {
        connection.write(bytes);
        connection.close();
    };
}

Handler thenReset(std::string bytes) {
    return [bytes = std::move(bytes)](ScriptedConnection& connection, const ScriptedRequest&) {
        connection.write(bytes);
        connection.reset();
    };
}

Handler thenSilence(std::string bytes) {
    return [bytes = std::move(bytes)](ScriptedConnection& connection, const ScriptedRequest&) {
        connection.write(bytes);
        connection.waitUntilClosed();
    };
}

Handler thenWithoutEnd(std::string bytes, const std::string& repeated) {
    constexpr std::size_t kBlock = 1 << 20;
    std::string block;
    while (block.size() < kBlock)
        block += repeated;
    return [bytes = std::move(bytes), block = std::move(block)](ScriptedConnection& connection, const auto&) {
        connection.write(bytes);
        while (connection.isOpen())
            connection.write(block);
    };
}

Handler thenByteByByte(std::string bytes, long milliseconds) {
    return [bytes = std::move(bytes), milliseconds](ScriptedConnection& connection, const ScriptedRequest&) {
        connection.write(bytes);
        while (!connection.isClosedWithin(std::chrono::milliseconds(milliseconds)))
            connection.write("x");
    };
}

/// A packed file may consist of several, one behind the other.
std::string gzipBomb() {
    constexpr std::size_t kPart = std::size_t{1} << 24;
    constexpr int kParts = 640;
    constexpr int kGzip = 15 + 16;
    std::string plain(kPart, ' ');
    std::string packed(1 << 16, '\0');
    z_stream stream{};
    if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, kGzip, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::runtime_error("Nothing can be packed");
    }
    stream.next_in = reinterpret_cast<Bytef*>(plain.data());
    stream.avail_in = static_cast<uInt>(plain.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    std::string bomb;
    for (int part = 0; part < kParts; ++part)
        bomb += packed;
    return bomb;
}

}  // namespace answer

}  // namespace faults
