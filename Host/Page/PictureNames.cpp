#include "Page/PictureNames.h"

#include "Batch/CardPairs.h"
#include "Page/PageAnswers.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <map>

namespace qvhost::PictureNames {
namespace {

constexpr std::size_t kLongest = 200;

std::vector<std::string> namesIn(const JSON::Value& body) {
    std::vector<std::string> names;
    if (!body.is_object() || !body.contains("names") || !body["names"].is_array()) return names;
    for (const JSON::Value& name : body["names"])
        names.push_back(name.is_string() ? shown(name.get<std::string>()) : "");
    return names;
}

}  // namespace

std::vector<std::vector<std::size_t>> paired(const std::vector<std::string>& names) {
    // The same name may come from several folders; only the first of them is paired.
    std::map<std::string, std::size_t> positions;
    std::vector<std::filesystem::path> pictures;
    std::vector<std::vector<std::size_t>> cards;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (positions.emplace(names[i], i).second) {
            pictures.emplace_back(names[i]);
        } else {
            cards.push_back({i});
        }
    }
    for (const BatchCard& card : CardPairs::byName(pictures)) {
        cards.push_back({positions.at(card.front.string())});
        if (card.back) cards.back().push_back(positions.at(card.back->string()));
    }
    std::sort(cards.begin(), cards.end());
    return cards;
}

JSON::Value pairs(const PageRequest& request) {
    return {{"cards", paired(namesIn(PageAnswers::body(request)))}};
}

std::string shown(const std::string& name) {
    std::string last = name.substr(name.find_last_of("/\\") + 1);
    if (last.size() <= kLongest) return last.empty() ? "picture" : last;
    std::size_t end = kLongest;
    while (end > 0 && (static_cast<unsigned char>(last[end]) & 0xC0U) == 0x80U)
        --end;
    last.resize(end);
    return last;
}

}  // namespace qvhost::PictureNames
