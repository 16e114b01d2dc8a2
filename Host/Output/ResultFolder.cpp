#include "Output/ResultFolder.h"

#include "Output/CardJSON.h"
#include "Output/ContactJSON.h"
#include "Output/MediaReference.h"
#include "Output/NoteHTML.h"
#include "Support/FileWriting.h"
#include "Support/Messages.h"

#include <nlohmann/json.hpp>

#include <string_view>
#include <system_error>
#include <utility>

namespace qvhost {
namespace {

QVString pageOf(const ScanOutcome& outcome, const Resources& resources) {
    const QVString note = outcome.response->qvmlContent();
    if (!note) return std::nullopt;
    const auto contact = outcome.response->contact();
    const QVString name = contact ? contact->fullName() : std::nullopt;
    return noteHTML(*note, name.value_or("Business card"), resources, outcome.response->imageRotationMap());
}

std::string_view textOf(const qv::Data& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace

std::optional<Failure> ResultFolder::make() const {
    return makeFolder(mFolder);
}

std::optional<Failure> ResultFolder::write(const ScanOutcome& outcome, const Resources& resources) const {
    const QVCardProcessingResponse& response = *outcome.response;
    // The note goes last: where it is, everything that it refers to is.
    if (auto failure = writeResources(response.qvmlContent().value_or(""), resources)) return failure;
    const std::pair<std::string, QVString> files[] = {
        {"result-front.xml", response.rawResultForFirstCard()},
        {"result-back.xml", response.rawResultForSecondCard()},
        {"card.json", JSON::text(cardJSON(outcome.card))},
        {"contact.json", JSON::text(contactJSON(response.contact()))},
        {"note.html", pageOf(outcome, resources)},
        {"note.qvml", response.qvmlContent()},
    };
    for (const auto& [name, text] : files) {
        if (auto failure = writeOrRemove(name, text)) return failure;
    }
    return std::nullopt;
}

std::optional<Failure> ResultFolder::writeOrRemove(const std::string& name, const QVString& text) const {
    if (text) return writeFile(mFolder / name, *text);
    std::error_code ignored;
    std::filesystem::remove(mFolder / name, ignored);
    return std::nullopt;
}

std::optional<Failure> ResultFolder::writeResources(const std::string& note, const Resources& resources) const {
    const std::filesystem::path folder = mFolder / "resources";
    for (const MediaReference& reference : MediaReference::allIn(note)) {
        const qv::Data* bytes = resources.find(reference.hash);
        if (bytes == nullptr) {
            Messages::say("The note refers to a picture that is not there: " + reference.hash + ".");
            continue;
        }
        if (auto failure = makeFolder(folder)) return failure;
        const std::string name = reference.hash + "." + std::string(FileKind::of(*bytes).extension);
        if (auto failure = writeFile(folder / name, textOf(*bytes))) return failure;
    }
    return std::nullopt;
}

}  // namespace qvhost
