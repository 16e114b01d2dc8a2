#include "Batch/IndexPage.h"

#include "Batch/CardFields.h"
#include "Batch/IndexStyle.h"
#include "Output/MediaReference.h"
#include "Output/TurnedPicture.h"
#include "QVPlatform/Text.h"
#include "Support/WebText.h"

#include <map>
#include <system_error>

namespace qvhost::IndexPage {
namespace {

namespace fs = std::filesystem;
using WebText::escaped;

std::string addressIn(const CardRecord& card, const std::string& file) {
    return WebText::address(fs::path("cards") / card.name / file);
}

std::string titleOf(const CardRecord& card, const CardFields& fields) {
    for (const char* kind : {"Name", "Company", "Email"}) {
        std::string text = fields.joined(kind, ", ");
        if (!text.empty()) return text;
    }
    return card.name;
}

std::int64_t numberIn(const JSON::Value& object, const char* key) {
    const auto found = object.is_object() ? object.find(key) : object.end();
    return object.is_object() && found != object.end() && found->is_number_integer() ? found->get<std::int64_t>() : 0;
}

qv::Size sizeOf(const JSON::Value& thumbnail) {
    return {static_cast<double>(numberIn(thumbnail, "width")), static_cast<double>(numberIn(thumbnail, "height"))};
}

std::string lazily(std::string picture, const std::string& alternative) {
    const std::string plain = "<img alt=\"\"";
    const std::size_t found = picture.find(plain);
    if (found != std::string::npos)
        picture.replace(found, plain.size(), "<img loading=\"lazy\" alt=\"" + escaped(alternative) + "\"");
    return picture;
}

std::string thumbnails(const CardRecord& card, const std::string& title) {
    std::string text = "<a class=\"pictures\" href=\"" + addressIn(card, "note.html") + "\">";
    const auto list = card.object.find("thumbnails");
    if (list == card.object.end() || !list->is_array()) return text + "</a>\n";
    for (const auto& thumbnail : *list) {
        const bool isBack = stringIn(thumbnail, "file").find("back") != std::string::npos;
        text += lazily(turnedPicture(addressIn(card, stringIn(thumbnail, "file")), "width:100%", sizeOf(thumbnail),
                                     numberIn(thumbnail, "rotation")),
                       (isBack ? "Back of the card of " : "Card of ") + title);
    }
    return text + "</a>\n";
}

std::string fieldList(const CardFields& fields) {
    std::string text = "<dl>\n";
    for (const auto& field : fields.fields) {
        if (field.kind == "Name" || field.texts.empty()) continue;
        text += "<dt>" + field.kind + "</dt>";
        for (const std::string& one : field.texts)
            text += "<dd>" + escaped(one) + "</dd>";
        text += "\n";
    }
    return text + "</dl>\n";
}

std::string messages(const CardRecord& card) {
    std::string text;
    for (const std::string& problem : stringsIn(card.object, "problems"))
        text += "<p class=\"problem\">" + escaped(problem) + "</p>\n";
    for (const std::string& remark : stringsIn(card.object, "remarks"))
        text += "<p class=\"remark\">" + escaped(remark) + "</p>\n";
    return text;
}

/// The files that hold the note's pictures, by hash.
std::map<std::string, std::string> resourcesIn(const fs::path& folder) {
    std::map<std::string, std::string> files;
    std::error_code error;
    for (fs::directory_iterator entry(folder / "resources", error); !error && entry != fs::directory_iterator();
         entry.increment(error))
        files.emplace(entry->path().stem().string(), "resources/" + entry->path().filename().string());
    return files;
}

/// How a picture of the card is shown: turned upright, and as a thumbnail where browsers do not show the file itself.
struct Shown {
    std::string file;
    qv::Size size;
    std::int64_t rotation = 0;
};

std::map<std::string, Shown> shownPictures(const CardRecord& card, const fs::path& folder) {
    std::map<std::string, Shown> shown;
    for (const auto& [hash, file] : resourcesIn(folder))
        shown.emplace(hash, Shown{file, {}, 0});
    const auto thumbnails = card.object.find("thumbnails");
    for (std::size_t i = 0; i < card.pictures.size(); ++i) {
        const auto found = shown.find(card.pictures[i].hash);
        if (found == shown.end() || thumbnails == card.object.end() || i >= thumbnails->size()) continue;
        const auto& thumbnail = (*thumbnails)[i];
        const std::string ending = fs::path(found->second.file).extension().string();
        if (ending == ".tiff" || ending == ".heic") found->second.file = stringIn(thumbnail, "file");
        found->second.size = sizeOf(thumbnail);
        found->second.rotation = numberIn(thumbnail, "rotation");
    }
    return shown;
}

/// The note in the page, its pictures beside the page.
std::string note(const CardRecord& card, const fs::path& folder) {
    const QVString note = qv::Text::stringWithContentsOfFile((folder / "note.qvml").string());
    if (!note) return "";
    const auto pictures = shownPictures(card, folder);
    std::string text;
    std::size_t done = 0;
    for (const MediaReference& reference : MediaReference::allIn(*note)) {
        text.append(*note, done, reference.position - done);
        done = reference.position + reference.length;
        const auto found = pictures.find(reference.hash);
        if (found == pictures.end()) continue;
        const Shown& shown = found->second;
        text += lazily(turnedPicture(addressIn(card, shown.file), reference.style, shown.size, shown.rotation), "");
    }
    text.append(*note, done);
    return "<details><summary>Note</summary><div class=\"note\">\n" + text + "\n</div></details>\n";
}

std::string links(const CardRecord& card, const fs::path& folder) {
    constexpr const char* kFiles[][2] = {{"note.html", "Note page"}, {"contact.vcf", "vCard"}, {"card.json", "Fields"}};
    std::string text = "<p class=\"links\">";
    std::error_code error;
    for (const auto& [file, name] : kFiles) {
        if (fs::exists(folder / file, error)) text += "<a href=\"" + addressIn(card, file) + "\">" + name + "</a> ";
    }
    return text + "<span>" + escaped(card.name) + "</span></p>\n";
}

std::string count(std::size_t number, const std::string& one, const std::string& many) {
    return std::to_string(number) + " " + (number == 1 ? one : many);
}

std::string failureList(const std::vector<Failed>& failed) {
    if (failed.empty()) return "";
    std::string text = "<details class=\"failed\" open><summary>" + count(failed.size(), "card", "cards") +
                       " could not be read</summary>\n<ul>\n";
    for (const Failed& one : failed)
        text += "<li><b>" + escaped(one.file) + "</b>: " + escaped(one.why) + "</li>\n";
    return text + "</ul></details>\n";
}

}  // namespace

std::string head(std::size_t cards, const std::vector<Failed>& failed) {
    std::string text(IndexStyle::beforePolicy());
    text += IndexStyle::policy();
    text += IndexStyle::afterPolicy();
    text += "<header>\n<h1>Business cards</h1>\n<p><span id=\"shown\">" + count(cards, "card", "cards") +
            "</span> · <a href=\"contacts.csv\">contacts.csv</a> · <a href=\"contacts.vcf\">contacts.vcf</a></p>\n"
            "<label hidden id=\"search\">Find <input id=\"filter\" type=\"search\" autocomplete=\"off\" "
            "placeholder=\"name, company, number …\"></label>\n</header>\n<main>\n";
    return text + failureList(failed);
}

std::string card(const CardRecord& card, const fs::path& folder) {
    const CardFields fields = CardFields::of(card);
    const std::string title = titleOf(card, fields);
    return "<article>\n" + thumbnails(card, title) + "<div class=\"what\">\n<h2>" + escaped(title) + "</h2>\n" +
           fieldList(fields) + messages(card) + note(card, folder) + links(card, folder) + "</div>\n</article>\n";
}

std::string tail() {
    return IndexStyle::tail();
}

}  // namespace qvhost::IndexPage
