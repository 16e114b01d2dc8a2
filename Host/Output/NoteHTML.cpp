#include "Output/NoteHTML.h"

#include "Output/MediaReference.h"
#include "Output/TurnedPicture.h"
#include "QVCardScan/QVVeltoNoteGenerator.h"

#include <string_view>

namespace qvhost {
namespace {

/// Links open elsewhere: a frame that shows the note, and in which nothing else may stand, would lose it otherwise.
constexpr std::string_view kHead = R"(<!DOCTYPE html>
<html>
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; img-src data:; style-src 'unsafe-inline'; base-uri 'none'; form-action 'none'">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="referrer" content="no-referrer">
<meta name="color-scheme" content="light dark">
<base target="_blank">
<title>)";

constexpr std::string_view kStyle = R"(</title>
<style>
:root { color-scheme: light dark; }
html { background: #e9ebee; }
body { margin: 0; padding: 24px 12px; }
img { max-width: 100%; }
.card-picture img { max-width: none; }
@media (prefers-color-scheme: dark) { html { background: #121416; } }
@media print { html { background: none; } body { padding: 0; } }
</style>
</head>
<body>
<main>
)";

constexpr std::string_view kTail = "</main>\n</body>\n</html>\n";

std::int64_t degreesFor(const std::string& hash, const QVRotationMap& rotation) {
    if (!rotation) return 0;
    const auto found = rotation->find(hash);
    return found != rotation->end() ? found->second : 0;
}

std::string picture(const MediaReference& reference, const Resources& resources, const QVRotationMap& rotation) {
    const std::string address = resources.dataAddress(reference.hash);
    if (address.empty()) return "";
    const std::int64_t degrees = degreesFor(reference.hash, rotation);
    return turnedPicture(address, reference.style, resources.size(reference.hash), degrees);
}

std::string withPictures(const std::string& note, const Resources& resources, const QVRotationMap& rotation) {
    std::string page;
    std::size_t done = 0;
    for (const MediaReference& reference : MediaReference::allIn(note)) {
        page.append(note, done, reference.position - done);
        page += picture(reference, resources, rotation);
        done = reference.position + reference.length;
    }
    return page.append(note, done);
}

}  // namespace

std::string noteHTML(const std::string& note, const std::string& title, const Resources& resources,
                     const QVRotationMap& rotation) {
    std::string page(kHead);
    page += QVVeltoNoteGenerator().XHTMLEncodedStringFromString(title);
    page.append(kStyle).append(withPictures(note, resources, rotation)).append("\n").append(kTail);
    return page;
}

}  // namespace qvhost
