#include "NoteTemplate.h"

#include "QVCardScan/QVCardScanDefines.h"
#include "QVPlatform/Log.h"
#include "QVPlatform/Text.h"

namespace qvnote {
namespace {

/// Where a placeholder next stands. Every element begins like a placeholder, but hardly anything else goes on like one:
/// a search from the second character on runs through long notes many times faster.
std::size_t nextPlace(std::string_view text, std::string_view placeholder, std::size_t from) {
    const std::string_view tail = placeholder.substr(1);
    std::size_t found = text.find(tail, from + 1);
    while (found != std::string_view::npos && text[found - 1] != placeholder[0])
        found = text.find(tail, found + 1);
    return found == std::string_view::npos ? found : found - 1;
}

}  // namespace

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
    std::size_t place = nextPlace(mText, placeholder, 0);
    if (place == std::string::npos) return;
    std::string filled;
    filled.reserve(mText.size() + text.size());
    std::size_t copied = 0;
    for (; place != std::string::npos; place = nextPlace(mText, placeholder, copied)) {
        filled.append(mText, copied, place - copied).append(text);
        copied = place + placeholder.size();
    }
    mText = filled.append(mText, copied);
}

}  // namespace qvnote
