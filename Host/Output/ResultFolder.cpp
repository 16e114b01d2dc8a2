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
#include <vector>

namespace qvhost {
namespace {

constexpr const char* kResources = "resources";

QVString pageOf(const ScanOutcome& outcome, const Resources& resources) {
    const QVString note = outcome.response->qvmlContent();
    if (!note) return std::nullopt;
    const auto contact = outcome.response->contact();
    const QVString name = contact ? contact->fullName() : std::nullopt;
    return noteHTML(*note, name.value_or("Business card"), resources, outcome.response->imageRotationMap());
}

std::set<std::string> hashesIn(const QVString& note) {
    std::set<std::string> hashes;
    for (const MediaReference& reference : MediaReference::allIn(note.value_or("")))
        hashes.insert(reference.hash);
    return hashes;
}

std::string_view textOf(const qv::Data& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// Whether a file is called as this program calls a picture; others that lie there are somebody else's.
bool isNameOfResource(const std::filesystem::path& file) {
    const std::string hash = file.stem().string();
    return hash.size() == 32 && hash.find_first_not_of("0123456789abcdef") == std::string::npos &&
           FileKind::isExtension(file.extension().string());
}

}  // namespace

std::optional<Failure> ResultFolder::make() const {
    return makeFolder(mFolder);
}

std::optional<Failure> ResultFolder::write(const ScanOutcome& outcome, const Resources& resources) const {
    // The note goes last: where it is, everything that it refers to is.
    const std::set<std::string> hashes = hashesIn(outcome.response->qvmlContent());
    for (const std::string& hash : hashes) {
        if (auto failure = writeResource(hash, resources)) return failure;
    }
    if (auto failure = writeTexts(outcome, resources)) return failure;
    removeOtherResources(hashes);
    return std::nullopt;
}

std::optional<Failure> ResultFolder::writeTexts(const ScanOutcome& outcome, const Resources& resources) const {
    const QVCardProcessingResponse& response = *outcome.response;
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

std::optional<Failure> ResultFolder::writeResource(const std::string& hash, const Resources& resources) const {
    const qv::Data* bytes = resources.find(hash);
    if (bytes == nullptr) {
        Messages::say("The note refers to a picture that is not there: " + hash + ".");
        return std::nullopt;
    }
    const std::filesystem::path folder = mFolder / kResources;
    if (auto failure = makeFolder(folder)) return failure;
    return writeFile(folder / (hash + "." + std::string(FileKind::of(*bytes).extension)), textOf(*bytes));
}

void ResultFolder::removeOtherResources(const std::set<std::string>& hashes) const {
    std::error_code error;
    std::vector<std::filesystem::path> leftOvers;
    std::filesystem::directory_iterator entry(mFolder / kResources, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::filesystem::path& file = entry->path();
        if (isNameOfResource(file) && !hashes.contains(file.stem().string())) leftOvers.push_back(file);
    }
    for (const std::filesystem::path& file : leftOvers)
        std::filesystem::remove(file, error);
}

}  // namespace qvhost
