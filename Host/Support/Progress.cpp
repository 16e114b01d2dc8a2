#include "Support/Progress.h"

#include "Support/StandardStreams.h"
#include "Support/TerminalText.h"

namespace qvhost {

Progress::Progress(const std::string& text) : mShows(!text.empty()) {
    if (mShows) StandardStreams::showStatus(TerminalText::printable(text));
}

Progress::~Progress() {
    if (mShows) StandardStreams::showStatus("");
}

}  // namespace qvhost
