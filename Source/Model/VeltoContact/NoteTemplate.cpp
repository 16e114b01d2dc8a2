#include "NoteTemplate.h"

#include "QVCardScan/QVCardScanDefines.h"
#include "QVPlatform/Log.h"
#include "QVPlatform/Text.h"

#include <algorithm>
#include <utility>

namespace qvnote {
namespace {

// How every placeholder begins. Every element begins with its first character, but hardly anything else goes on like
// it: a search from the second character on runs through long notes many times faster.
constexpr std::string_view kPlaceStart = "<!--x-quorvane:";

std::size_t nextPlace(std::string_view text, std::size_t from) {
    const std::string_view tail = kPlaceStart.substr(1);
    std::size_t found = text.find(tail, from + 1);
    while (found != std::string_view::npos && text[found - 1] != kPlaceStart[0])
        found = text.find(tail, found + 1);
    return found == std::string_view::npos ? text.size() : found - 1;
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

// The one piece that most texts are is moved; only what stands before or behind a place in it is copied.
void NoteTemplate::append(std::string text) {
    const std::size_t first = nextPlace(text, 0);
    if (text.empty()) return;
    if (first == text.size()) {
        mPieces.push_back(std::move(text));
        return;
    }
    if (first > 0) mPieces.push_back(text.substr(0, first));
    for (std::size_t start = first; start < text.size();) {
        const std::size_t end = nextPlace(text, start + 1);
        mPieces.push_back(text.substr(start, end - start));
        start = end;
    }
}

void NoteTemplate::fill(std::string_view placeholder, std::string text) {
    const auto stands = [&](const std::string& piece) { return piece.starts_with(placeholder); };
    auto places = std::count_if(mPieces.begin(), mPieces.end(), stands);
    if (places == 0) return;
    std::vector<std::string> before;
    before.swap(mPieces);
    for (std::string& piece : before) {
        if (!stands(piece)) {
            mPieces.push_back(std::move(piece));
            continue;
        }
        append(--places > 0 ? text : std::exchange(text, {}));
        append(piece.substr(placeholder.size()));
    }
}

std::string NoteTemplate::text() const {
    std::size_t length = 0;
    for (const std::string& piece : mPieces)
        length += piece.size();
    std::string whole;
    whole.reserve(length);
    for (const std::string& piece : mPieces)
        whole += piece;
    return whole;
}

}  // namespace qvnote
