#include "Batch/CardPairs.h"

#include "QVPlatform/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <string_view>
#include <utility>

namespace qvhost {

std::vector<std::string> BatchCard::files() const {
    std::vector<std::string> files{front.string()};
    if (back) files.push_back(back->string());
    return files;
}

namespace CardPairs {
namespace {

namespace fs = std::filesystem;

enum class Side { None, Front, Back, Numbered };

/// A name without what says which side it is.
struct Stem {
    std::string base;
    Side side = Side::None;
    std::string number;
};

std::optional<std::string> baseBefore(const std::string& stem, std::string_view word) {
    constexpr std::string_view kSeparators = "-_. ";
    if (stem.size() < word.size() + 2 || !stem.ends_with(word)) return std::nullopt;
    const std::size_t separator = stem.size() - word.size() - 1;
    if (kSeparators.find(stem[separator]) == std::string_view::npos) return std::nullopt;
    return stem.substr(0, separator);
}

Stem stemOf(const fs::path& file) {
    const std::string stem = qv::Text::lowercased(file.stem().string());
    if (auto base = baseBefore(stem, "front")) return {*base, Side::Front, ""};
    if (auto base = baseBefore(stem, "back")) return {*base, Side::Back, ""};
    const std::size_t line = stem.rfind('_');
    if (line != std::string::npos && line > 0 && line + 1 < stem.size() &&
        stem.find_first_not_of("0123456789", line + 1) == std::string::npos)
        return {stem.substr(0, line), Side::Numbered, stem.substr(line + 1)};
    return {stem, Side::None, ""};
}

std::string endingOf(const fs::path& file) {
    return qv::Text::lowercased(file.extension().string());
}

/// Positions of the pictures that go by one name.
struct Group {
    std::vector<std::size_t> fronts;
    std::vector<std::size_t> backs;
    std::vector<std::size_t> wholes;
    std::map<std::string, std::vector<std::size_t>> numbered;

    bool isNumberedPair() const { return numbered.size() == 2 && numbered.contains("1") && numbered.contains("2"); }
};

class Pairing {
  public:
    explicit Pairing(const std::vector<fs::path>& pictures) : mPictures(pictures), mCards(pictures.size()) {}

    std::vector<BatchCard> run() {
        for (std::size_t i = 0; i < mPictures.size(); ++i) {
            mCards[i].emplace(BatchCard{mPictures[i], std::nullopt, ""});
            add(i, stemOf(mPictures[i]));
        }
        for (const auto& [key, group] : mGroups)
            pair(group);
        std::vector<BatchCard> cards;
        for (std::optional<BatchCard>& card : mCards) {
            if (card) cards.push_back(std::move(*card));
        }
        return cards;
    }

  private:
    void add(std::size_t position, const Stem& stem) {
        Group& group = mGroups[{mPictures[position].parent_path().string(), stem.base}];
        switch (stem.side) {
            case Side::Front:
                return group.fronts.push_back(position);
            case Side::Back:
                return group.backs.push_back(position);
            case Side::Numbered:
                return group.numbered[stem.number].push_back(position);
            default:
                return group.wholes.push_back(position);
        }
    }

    void pair(const Group& group) {
        pair(group.fronts.empty() ? group.wholes : group.fronts, group.backs);
        if (group.isNumberedPair()) pair(group.numbered.at("1"), group.numbered.at("2"));
    }

    void pair(std::vector<std::size_t> fronts, const std::vector<std::size_t>& backs) {
        std::vector<std::size_t> left;
        for (const std::size_t back : backs) {
            if (!pairWithSameEnding(fronts, back)) left.push_back(back);
        }
        for (const std::size_t back : left) {
            if (fronts.empty()) {
                mCards[back]->remark = "there is no front for this back";
            } else {
                join(fronts, fronts.begin(), back);
            }
        }
        for (const std::size_t front : fronts) {
            if (!backs.empty()) mCards[front]->remark = "the back of this name belongs to another front";
        }
    }

    bool pairWithSameEnding(std::vector<std::size_t>& fronts, std::size_t back) {
        const auto front = std::find_if(fronts.begin(), fronts.end(), [&](std::size_t position) {
            return endingOf(mPictures[position]) == endingOf(mPictures[back]);
        });
        if (front == fronts.end()) return false;
        join(fronts, front, back);
        return true;
    }

    void join(std::vector<std::size_t>& fronts, std::vector<std::size_t>::iterator front, std::size_t back) {
        mCards[*front]->back = mPictures[back];
        mCards[back].reset();
        fronts.erase(front);
    }

    const std::vector<fs::path>& mPictures;
    /// One for each picture; none where the picture became another's back.
    std::vector<std::optional<BatchCard>> mCards;
    /// By folder and name.
    std::map<std::pair<std::string, std::string>, Group> mGroups;
};

}  // namespace

std::vector<BatchCard> byName(const std::vector<fs::path>& pictures) {
    return Pairing(pictures).run();
}

std::vector<BatchCard> byOrder(const std::vector<fs::path>& pictures) {
    std::vector<BatchCard> cards;
    cards.reserve(pictures.size() / 2 + 1);
    for (std::size_t i = 0; i < pictures.size(); i += 2) {
        BatchCard card{pictures[i], std::nullopt, ""};
        if (i + 1 < pictures.size()) {
            card.back = pictures[i + 1];
        } else {
            card.remark = "the last picture has no back to go with it";
        }
        cards.push_back(std::move(card));
    }
    return cards;
}

}  // namespace CardPairs
}  // namespace qvhost
