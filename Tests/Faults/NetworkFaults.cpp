#include "Faults/NetworkFault.h"
#include "Source/Operation/ScanFixtures.h"

#include <algorithm>
#include <iterator>

namespace faults {

using namespace answer;
using testsupport::ScriptedServer;

namespace {

const std::string kOK = "HTTP/1.1 200 OK\r\n";
const std::string kChunked = kOK + "Transfer-Encoding: chunked\r\n\r\n";
const std::string kChunk = "1000\r\n" + std::string(0x1000, 'x') + "\r\n";
/// Well-formed as far as it goes, so that only the transfer can keep it from being read.
const std::string kResult = scans::result({scans::kName, scans::kTitle, scans::kEmail});
const std::string kLong = kOK + "Content-Length: 100000\r\n\r\n" + kResult;

std::string withLength(const std::string& length) {
    return kOK + "Content-Length: " + length + "\r\n\r\n" + kResult;
}

FaultyServer trustedServer(const testsupport::TLSCertificateOptions& options) {
    return withCertificate(options, /*isTrusted=*/true);
}

/// Nothing is wrong with this one, so that what is wrong with the others is what their rows say.
FaultyServer goodServer() {
    FaultyServer server = trustedServer({});
    server.expectAfterwards = [] {};
    return server;
}

/// What a client waits for by default without any progress. In all it waits ten minutes; a server that has other things
/// to do is taken for a silent one before.
constexpr long kStall = 60;
constexpr long kHour = 3600;
/// At this speed a minute takes three tenths of a second.
constexpr long kSwift = 200;
/// A byte every 5 of our milliseconds is one a second then.
constexpr long kOneASecond = 1000 / kSwift;
constexpr std::size_t kSmall = 32;
/// An answer may have 16 MiB, is kept once while it grows, and three arrive at once.
constexpr std::size_t kThreeLarge = 200;

// clang-format off
const std::vector<NetworkFault> kFaults = {
    // name, the fault, how a card ends, the transport error's codes and text, after how many seconds, speed, MiB, roads
    {"NobodyListens", nobody, End::NotReached, {7}, "connect to", 0, 1, kSmall, Every},
    {"NameNotFound", [] { return at("https://nobody.invalid/"); },
     End::NotReached, {6}, "Could not resolve host", 0, 1, kSmall, Every},
    {"NameServerSilent", [] { return at("https://silent.invalid/"); },
     End::NotReached, {6}, "Could not resolve host", 0, 1, kSmall, Usual},

    {"EndAtOnce", [] { return talks([](auto& client) { client.close(); }); },
     End::NotReached, {52, 55, 56}, "", 0, 1, kSmall, Usual},
    {"ResetAtOnce", [] { return talks([](auto& client) { client.reset(); }); },
     End::NotReached, {7, 52, 55, 56}, "", 0, 1, kSmall, Usual},
    {"EndBeforeStatus", [] { return answers(thenEnd("")); }, End::NotReached, {52}, "Empty reply", 0, 1, kSmall, Usual},
    {"ResetBeforeStatus", [] { return answers(thenReset("")); }, End::NotReached, {56}, "reset", 0, 1, kSmall, Every},
    {"EndInStatus", [] { return answers(thenEnd("HTTP/1.1 2")); },
     End::NotReached, {1, 8, 52, 56}, "", 0, 1, kSmall, Usual},
    {"EndInHeaders", [] { return answers(thenEnd(kOK + "Content-Le")); }, End::Unreadable, {}, "", 0, 1, kSmall, Usual},
    {"ResetInHeaders", [] { return answers(thenReset(kOK + "Content-Le")); },
     End::NotReached, {56}, "", 0, 1, kSmall, Usual},
    {"EndInBody", [] { return answers(thenEnd(kLong)); },
     End::NotReached, {18}, "transfer closed", 0, 1, kSmall, Usual},
    {"ResetInBody", [] { return answers(thenReset(kLong)); }, End::NotReached, {18, 56}, "", 0, 1, kSmall, Usual},
    {"EndInChunk", [] { return answers(thenEnd(kChunked + "1000\r\n" + kResult)); },
     End::NotReached, {18, 56}, "", 0, 1, kSmall, Usual},
    {"ResetAfterBody", [] { return answers(thenReset(ScriptedServer::answer(200, kResult))); },
     End::Read, {}, "", 0, 1, kSmall, 0},

    {"StallInConnect", fullLine, End::NotReached, {28}, "", kStall, kSwift, kSmall, Usual},
    {"StallInHandshake", [] { return talks([](auto& client) { client.waitUntilClosed(); }, "https"); },
     End::NotReached, {28}, "", kStall, kSwift, kSmall, Usual},
    {"StallBeforeStatus", [] { return answers(thenSilence("")); },
     End::NotReached, {28}, "No progress for", kStall, kSwift, kSmall, Every},
    {"StallInStatus", [] { return answers(thenSilence("HTTP/1.1 2")); },
     End::NotReached, {28}, "No progress for", kStall, kSwift, kSmall, Usual},
    {"StallInHeaders", [] { return answers(thenSilence(kOK + "Content-Le")); },
     End::NotReached, {28}, "No progress for", kStall, kSwift, kSmall, Usual},
    {"StallInBody", [] { return answers(thenSilence(kLong)); },
     End::NotReached, {28}, "No progress for", kStall, kSwift, kSmall, Usual},
    {"StallInChunk", [] { return answers(thenSilence(kChunked + "1000\r\n" + kResult)); },
     End::NotReached, {28}, "No progress for", kStall, kSwift, kSmall, Usual},
    {"OneByteASecondOfHeaders", [] { return answers(thenByteByByte(kOK + "X: ", kOneASecond)); },
     End::NotReached, {28}, "No progress for", kStall, kSwift, kSmall, Usual},
    {"OneByteASecondOfBody", [] { return answers(thenByteByByte(kLong, kOneASecond)); },
     End::NotReached, {28}, "", kStall, kSwift, kSmall, Every},

    {"TenGigabytesAnnounced", [] { return answers(thenWithoutEnd(kOK + "Content-Length: 10737418240\r\n\r\n", "x")); },
     End::NotReached, {-3}, "larger than allowed", 0, 1, kThreeLarge, Every},
    {"TenGigabytesInChunks", [] { return answers(thenWithoutEnd(kChunked, kChunk)); },
     End::NotReached, {-3}, "larger than allowed", 0, 1, kThreeLarge, Every},
    {"BodyWithoutEnd", [] { return answers(thenWithoutEnd(kOK + "\r\n", "x")); },
     End::NotReached, {-3}, "larger than allowed", 0, 1, kThreeLarge, Usual},
    {"HeaderWithoutEnd", [] { return answers(thenWithoutEnd(kOK + "X: ", "x")); },
     End::NotReached, {-3, 27, 56}, "", 0, 1, kThreeLarge, Usual},
    {"HeadersWithoutEnd", [] { return answers(thenWithoutEnd(kOK, "X: x\r\n")); },
     End::NotReached, {-3}, "larger than allowed", 0, 1, kSmall, Usual},
    {"InterimAnswersWithoutEnd", [] { return answers(thenWithoutEnd("", "HTTP/1.1 100 Continue\r\n\r\n")); },
     End::NotReached, {-3}, "larger than allowed", 0, 1, kSmall, Usual},
    {"TrailersWithoutEnd", [] { return answers(thenWithoutEnd(kChunked + "0\r\n", "X: x\r\n")); },
     End::NotReached, {-3}, "larger than allowed", 0, 1, kSmall, Usual},
    {"ChunkSizeWithoutEnd", [] { return answers(thenWithoutEnd(kChunked, "0")); },
     End::NotReached, {56}, "", 0, 1, kSmall, Usual},
    {"ChunkExtensionWithoutEnd", [] { return answers(thenWithoutEnd(kChunked + "1;", "x")); },
     End::NotReached, {28}, "No progress for", kStall, kSwift, kSmall, Usual},
    {"GzipBomb", [] { return answers(ScriptedServer::answer(200, gzipBomb(), "Content-Encoding: gzip\r\n")); },
     End::Unreadable, {}, "larger than allowed", 0, 1, kThreeLarge, Usual},

    {"LengthTooLong", [] { return answers(thenEnd(withLength(std::to_string(kResult.size() + 1)))); },
     End::NotReached, {18}, "transfer closed", 0, 1, kSmall, Usual},
    {"LengthTooShort", [] { return answers(thenEnd(withLength(std::to_string(kResult.size() / 2)))); },
     End::Read, {}, "", 0, 1, kSmall, CardDAV},
    {"LengthNegative", [] { return answers(thenEnd(withLength("-5"))); },
     End::NotReached, {8}, "", 0, 1, kSmall, Usual},
    {"LengthTooLargeToCount", [] { return answers(thenSilence(withLength("99999999999999999999999"))); },
     End::NotReached, {-3, 8, 63}, "", 0, 1, kSmall, Usual},
    {"ChunkSizeNoNumber", [] { return answers(thenEnd(kChunked + "zz\r\n" + kResult)); },
     End::NotReached, {56}, "", 0, 1, kSmall, Usual},
    {"NotHTTP", [] { return answers(thenEnd("SSH-2.0-OpenSSH_9.2\r\n")); },
     End::NotReached, {1}, "HTTP/0.9", 0, 1, kSmall, Every},

    {"RedirectToItself301", [] { return redirectsToItself(301); },
     End::Unreadable, {}, "redirects too often", 0, 1, kSmall, Usual},
    {"RedirectToItself307", [] { return redirectsToItself(307); },
     End::Unreadable, {}, "redirects too often", 0, 1, kSmall, Every},
    {"RedirectElsewhere302", [] { return redirectsElsewhere(302); },
     End::Unreadable, {}, "where the password does not go", 0, 1, kSmall, Every & ~Link},
    {"RedirectElsewhere308", [] { return redirectsElsewhere(308); },
     End::Unreadable, {}, "where the password does not go", 0, 1, kSmall, CardDAV},
    {"RedirectToAFile", [] { return answers(ScriptedServer::answer(302, "", "Location: file:///etc/passwd\r\n")); },
     End::Unreadable, {}, "where the password does not go", 0, 1, kSmall, Usual},

    {"CertificateInOrder", goodServer, End::Read, {}, "", 0, 1, kSmall, 0},
    {"CertificateOfNobody", [] { return withCertificate({}, /*isTrusted=*/false); },
     End::NotReached, {60}, "self-signed certificate", 0, 1, kSmall, Every},
    {"CertificateExpired", [] { return trustedServer({.validFrom = -7200, .validUntil = -3600}); },
     End::NotReached, {60}, "certificate has expired", 0, 1, kSmall, Usual},
    {"CertificateNotYetValid", [] { return trustedServer({.validFrom = 3600, .validUntil = 7200}); },
     End::NotReached, {60}, "certificate is not yet valid", 0, 1, kSmall, Usual},
    {"CertificateOfOtherName", [] { return trustedServer({.address = "127.0.0.2"}); },
     End::NotReached, {60}, "no alternative certificate subject name matches", 0, 1, kSmall, Usual},
    {"WallClockSetBack", [] { return setsWallClock(-1'000'000'000); }, End::Read, {}, "", 0, 1, kSmall, 0},
    {"WallClockSetAhead", [] { return setsWallClock(1'000'000'000); }, End::Read, {}, "", 0, 1, kSmall, 0},
    {"HourLostInBody", [] { return losesAnHour(kLong); }, End::NotReached, {28}, "", kHour, 1, kSmall, 0},

    {"NoTLSAtAll", [] { return talks([](auto& client) { client.write(kLong); client.close(); }, "https"); },
     End::NotReached, {35}, "", 0, 1, kSmall, Usual},
    {"EndInHandshake", [] { return talks([](auto& client) { client.close(); }, "https"); },
     End::NotReached, {35}, "", 0, 1, kSmall, Usual},
};
// clang-format on

}  // namespace

const std::vector<NetworkFault>& networkFaults() {
    return kFaults;
}

std::vector<NetworkFault> networkFaultsOf(Road road) {
    std::vector<NetworkFault> some;
    std::copy_if(kFaults.begin(), kFaults.end(), std::back_inserter(some),
                 [road](const NetworkFault& fault) { return (fault.roads & road) != 0; });
    return some;
}

}  // namespace faults
