#include "Support/HostLog.h"

#include "QVPlatform/Log.h"
#include "Support/StandardStreams.h"
#include "Support/TerminalText.h"

#include <cstdlib>
#include <string_view>

namespace qvhost::HostLog {
namespace {

bool environmentAsks() {
    const char* value = std::getenv("QVCARDSCAN_LOG");
    return value != nullptr && *value != '\0' && std::string_view(value) != "0";
}

bool writesLog = false;

}  // namespace

bool isWanted() {
    return writesLog;
}

void install(bool wanted) {
    writesLog = wanted || environmentAsks();
    if (!writesLog) return qv::Log::setSink({});
    qv::Log::setSink(
        [](std::string_view message) { StandardStreams::writeError(TerminalText::printable(message) + "\n"); });
}

}  // namespace qvhost::HostLog
