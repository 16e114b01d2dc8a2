#include "NoteTemplate.h"

#include "QVCardScan/QVCardScanDefines.h"
#include "QVPlatform/Log.h"
#include "QVPlatform/Text.h"

namespace qvnote {

qv::Bundle libraryBundle() {
    static const char inThisLibrary = 0;
    return qv::Bundle::bundleForAddress(&inThisLibrary);
}

std::optional<NoteTemplate> NoteTemplate::read(std::string_view name) {
    const std::string path = libraryBundle().pathForResource(name, QVVeltoNoteTemplateFileType).string();
    auto text = qv::Text::stringWithContentsOfFile(path);
    if (!text) {
        qv::Log::write("<ERROR> Error when opening template file: %@", path);
        return std::nullopt;
    }
    return NoteTemplate(*std::move(text));
}

void NoteTemplate::fill(std::string_view placeholder, std::string_view text) {
    // Most places stand in a template once or not at all: what is not there costs no copy.
    if (mText.find(placeholder) == std::string::npos) return;
    mText = qv::Text::replaceAll(mText, placeholder, text);
}

}  // namespace qvnote
