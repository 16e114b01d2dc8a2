#include "Support/Progress.h"

#include "Support/StandardStreams.h"
#include "Support/TerminalText.h"

namespace qvhost {

Progress::Progress(const std::string& text) {
    StandardStreams::showStatus(TerminalText::printable(text));
}

Progress::~Progress() {
    StandardStreams::showStatus("");
}

}  // namespace qvhost
