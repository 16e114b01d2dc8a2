#pragma once

#include "Faults/RawServer.h"
#include "Support/ScriptedServer.h"
#include "Support/UntrustedTLSServer.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace faults {

/// A server with a fault, as long as this lives.
struct FaultyServer {
    std::string url;
    /// What must hold when all is over.
    std::function<void()> expectAfterwards = [] {};
    std::shared_ptr<void> server;
};

/// How a card ends whose recognition meets the fault.
enum class End {
    NotReached,  ///< error 2 with a transport error, no answer
    Unreadable,  ///< error 3, no answer
    Read,        ///< no error
};

/// The roads that a fault is tried on besides the recognition, each a bit.
enum Road : unsigned { Link = 1, CardDAV = 2, Search = 4, Program = 8, Usual = Link | CardDAV, Every = 15 };

/// A row of the table.
struct NetworkFault {
    const char* name;
    std::function<FaultyServer()> begin;
    End end;
    /// The transport error's code is one of these (libcurl's, or the client's own below 0), and this is in its text;
    /// also in the text of the address book's error, where there is none.
    std::vector<long> codes;
    const char* text;
    /// By the clocks of the fault: when it ends a card, and how many of its seconds go into one of ours.
    long seconds;
    long speed;
    /// What three cards at once may cost.
    std::size_t megabytes;
    unsigned roads;
};

inline void PrintTo(const NetworkFault& fault, std::ostream* stream) {
    *stream << fault.name;
}

/// Every row.
const std::vector<NetworkFault>& networkFaults();
/// Those of one road.
std::vector<NetworkFault> networkFaultsOf(Road road);

/// The servers that the rows begin.
FaultyServer at(std::string url);
FaultyServer nobody();
/// Answers each request that it has read like this.
FaultyServer answers(testsupport::ScriptedServer::Handler handler);
FaultyServer answers(std::string bytes);
/// Talks before it has read anything, as http or https.
FaultyServer talks(RawServer::Talk talk, const std::string& scheme = "http");
FaultyServer fullLine();
/// Answers with a redirect to itself, or to another server that must never be asked.
FaultyServer redirectsToItself(int status);
FaultyServer redirectsElsewhere(int status);
/// Would answer, behind this certificate; trusted like those that come with the system, or not.
FaultyServer withCertificate(const testsupport::TLSCertificateOptions& options, bool isTrusted);
/// Answers well, and somebody sets the clock meanwhile.
FaultyServer setsWallClock(long seconds);
/// Says this and no more, and the clocks go on by an hour at once, as when a machine has slept.
FaultyServer losesAnHour(std::string bytes);

/// Ways to answer.
namespace answer {
using testsupport::ScriptedConnection;
using testsupport::ScriptedRequest;
using Handler = testsupport::ScriptedServer::Handler;

/// These bytes, and then what the name says.
Handler thenEnd(std::string bytes);
Handler thenReset(std::string bytes);
Handler thenSilence(std::string bytes);
/// These bytes, and then the others over and over, until the client goes.
Handler thenWithoutEnd(std::string bytes, const std::string& repeated);
/// These bytes, and then a byte every so many of our milliseconds.
Handler thenByteByByte(std::string bytes, long milliseconds);

/// Ten times 2^30 spaces, packed.
std::string gzipBomb();
}  // namespace answer

}  // namespace faults
