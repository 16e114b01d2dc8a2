#include "Text/Languages.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <system_error>

namespace qv::recognition {
namespace {

const std::map<std::string, std::string>& modelNames() {
    static const std::map<std::string, std::string> names = {
        {"en", "eng"}, {"de", "deu"}, {"fr", "fra"}, {"es", "spa"}, {"it", "ita"}, {"pt", "por"},     {"nl", "nld"},
        {"tr", "tur"}, {"pl", "pol"}, {"cs", "ces"}, {"ja", "jpn"}, {"ko", "kor"}, {"zh", "chi_sim"},
    };
    return names;
}

std::string primarySubtag(std::string_view contentLanguage) {
    const auto start = std::min(contentLanguage.find_first_not_of(" \t"), contentLanguage.size());
    const auto tag = contentLanguage.substr(start);
    std::string primary(tag.substr(0, tag.find_first_of("-_,; \t")));
    std::transform(primary.begin(), primary.end(), primary.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return primary;
}

/// Cards in these scripts mix in Latin: names, e-mail addresses, links.
bool mixesWithLatin(const std::string& code) {
    return code == "ja" || code == "ko" || code == "zh";
}

}  // namespace

bool isInstalled(const std::filesystem::path& models, const std::string& model) {
    std::error_code error;
    return std::filesystem::is_regular_file(models / (model + ".traineddata"), error);
}

ReadingLanguage readingLanguage(std::string_view contentLanguage, const std::filesystem::path& models) {
    const std::string code = primarySubtag(contentLanguage);
    if (code.empty()) return {"en", "eng", false};
    const auto name = modelNames().find(code);
    if (name == modelNames().end() || !isInstalled(models, name->second)) return {"en", "eng", true};
    return {code, mixesWithLatin(code) ? name->second + "+eng" : name->second, false};
}

std::filesystem::path installedModels() {
    const char* prefix = std::getenv("TESSDATA_PREFIX");
    for (const auto& folder :
         {std::filesystem::path(prefix == nullptr ? "" : prefix),
          std::filesystem::path("/usr/share/tesseract-ocr/5/tessdata"), std::filesystem::path("/usr/share/tessdata"),
          std::filesystem::path("/usr/local/share/tessdata"), std::filesystem::path("/opt/homebrew/share/tessdata")}) {
        if (!folder.empty() && isInstalled(folder, "eng")) return folder;
    }
    return {};
}

}  // namespace qv::recognition
