#include "Support/Messages.h"

#include "Support/StandardStreams.h"
#include "Support/TerminalText.h"

#include <string>

namespace qvhost::Messages {

void say(std::string_view message) {
    StandardStreams::writeError("qvcardscan: " + TerminalText::printable(message) + "\n");
}

void sayLines(std::string_view lines) {
    StandardStreams::writeError(TerminalText::printableLines(lines));
}

}  // namespace qvhost::Messages
