#include "Output/MediaReference.h"

namespace qvhost {
namespace {

constexpr std::string_view kStart = "<qv-media ";

/// The value of `name="…"` in a tag; empty when it is not there.
std::string attribute(std::string_view tag, std::string_view name) {
    const std::string start = " " + std::string(name) + "=\"";
    const std::size_t found = tag.find(start);
    if (found == std::string_view::npos) return "";
    tag.remove_prefix(found + start.size());
    return std::string(tag.substr(0, tag.find('"')));
}

}  // namespace

std::vector<MediaReference> MediaReference::allIn(std::string_view note) {
    std::vector<MediaReference> references;
    for (std::size_t start = note.find(kStart); start != std::string_view::npos; start = note.find(kStart, start + 1)) {
        const std::size_t end = note.find('>', start);
        if (end == std::string_view::npos) break;
        const std::string_view tag = note.substr(start, end + 1 - start);
        references.push_back({start, tag.size(), attribute(tag, "style"), attribute(tag, "hash")});
    }
    return references;
}

}  // namespace qvhost
