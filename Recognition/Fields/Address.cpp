#include "Fields/Address.h"

#include "Fields/EastAsian.h"
#include "Fields/Postcode.h"
#include "Fields/Words/WordSet.h"
#include "Fields/Words/Words.h"
#include "Text/Layout.h"
#include "Text/Letters.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <optional>

namespace qv::recognition {
namespace {

constexpr float kCore = 0.5F;       // a line that starts a block
constexpr float kNeighbour = 0.2F;  // a line that a block takes in
constexpr float kAccepted = 0.5F;
constexpr float kAside = 3;  // in type sizes, between parts of one printed line
constexpr float kSizeRatio = 1.5F;
constexpr float kNotNear = std::numeric_limits<float>::max();

/// What a line holds that addresses are made of.
struct Traits {
    float postcode = 0;
    bool street = false;
    bool number = false;
    bool leadingNumber = false;
    bool trailingNumber = false;
    bool place = false;
    bool country = false;
    bool box = false;
    bool state = false;
    bool comma = false;
    bool title = false;
    bool firm = false;
};

bool isHouseNumber(const std::string& word) {
    const std::string bare = trimmed(word, ".,;:()#");
    return !bare.empty() && bare.size() <= 9 && bare[0] >= '0' && bare[0] <= '9' && countDigits(bare) <= 6 &&
           countLetters(bare) <= 2;
}

/// "12a", "33/240", "94-320": none of the numbers is as long as a post code or a telephone number.
bool hasShortNumbers(const std::string& word) {
    int digits = 0;
    for (const char c : word) {
        digits = c >= '0' && c <= '9' ? digits + 1 : 0;
        if (digits > 4) return false;
    }
    return true;
}

/// "Lange Reihe 5", "Am Wall 12a", "Na Lukách 33/240": streets whose names do not say so.
bool endsWithHouseNumber(const std::vector<std::string>& words) {
    if (words.size() < 2 || words.size() > 5 || !hasShortNumbers(words.back()) || !isHouseNumber(words.back()))
        return false;
    return countLetters(words[words.size() - 2]) >= 3 && isCapital(codePoints(words.front()).front());
}

bool isBox(const std::vector<std::string>& words) {
    const auto has = [&](std::string_view word) { return std::find(words.begin(), words.end(), word) != words.end(); };
    return has("postfach") || has("apartado") || has("pobox") || has("postbus") ||
           (has("box") && (has("po") || has("p.o") || has("gpo"))) || (has("bp") && words.size() >= 2);
}

bool isStateName(const std::string& printed) {
    const std::string word = trimmed(printed, ".,;:()");
    return words::isState(folded(word)) && (word.size() > 3 || isAllCapitals(word));
}

/// "US" is a country, "us" is not.
bool isCountryName(const std::string& printed) {
    const std::string word = trimmed(printed, ".,;:()");
    return words::isCountry(folded(word)) && (word.size() > 3 || isAllCapitals(word));
}

Traits traitsOf(const std::string& text) {
    Traits traits;
    const auto printed = splitAtSpaces(text);
    const auto words = foldedWords(text);
    traits.postcode = postcodeEvidence(printed);
    traits.number = std::any_of(printed.begin(), printed.end(), isHouseNumber);
    traits.leadingNumber = !printed.empty() && isHouseNumber(printed.front()) && countLetters(text) >= 3;
    traits.trailingNumber = endsWithHouseNumber(printed);
    traits.street = std::any_of(words.begin(), words.end(), [](const auto& word) { return words::isStreet(word); }) ||
                    startsWith(folded(text), "c/");
    traits.place = std::any_of(words.begin(), words.end(), [](const auto& word) { return words::isAddress(word); });
    traits.country = std::any_of(printed.begin(), printed.end(), isCountryName);
    traits.state = std::any_of(printed.begin(), printed.end(), isStateName);
    traits.title = std::any_of(words.begin(), words.end(), [](const auto& word) { return words::isTitle(word); });
    traits.firm = std::any_of(words.begin(), words.end(),
                              [](const auto& word) { return words::isLegalForm(word) && word.size() > 2; });
    traits.box = isBox(words);
    traits.comma = text.find(',') != std::string::npos;
    return traits;
}

float evidence(const Traits& traits, std::size_t words) {
    float sum = traits.postcode * 0.75F;
    if (traits.street) sum += traits.number ? 0.6F : 0.3F;
    if (traits.leadingNumber && !traits.street) sum += 0.25F;
    if (traits.trailingNumber && !traits.street) sum += 0.3F;
    if (traits.box) sum += 0.5F;
    if (traits.country) sum += words <= 2 ? 0.45F : 0.3F;
    if (traits.state && traits.comma) sum += 0.2F;
    if (traits.place) sum += traits.number || traits.comma ? 0.25F : 0.1F;
    if (traits.comma) sum += 0.05F;
    if (traits.title && !traits.number) sum -= 0.4F;
    if (traits.firm) sum -= 0.45F;
    return std::clamp(sum, 0.F, 1.F);
}

/// A country or a state alone may as well be part of a firm's name.
bool isPlainly(const std::string& text) {
    if (isEastAsianText(text)) return eastAsianAddress(text) >= kCore;
    const Traits traits = traitsOf(text);
    return traits.postcode >= 0.45F || (traits.street && traits.number) || traits.box ||
           (traits.comma && (traits.country || traits.state));
}

bool likeType(const TextLine& a, const TextLine& b) {
    // Few letters give a poor type size; then the lines' heights still tell.
    return std::max(a.size, b.size) <= kSizeRatio * std::min(a.size, b.size) ||
           std::max(a.box.h, b.box.h) <= kSizeRatio * std::min(a.box.h, b.box.h);
}

bool neighbours(const TextLine& upper, const TextLine& lower) {
    return followsInColumn(upper, lower) && likeType(upper, lower);
}

bool endsWithComma(const TextLine& line) {
    return endsWith(line.text(), ",");
}

/// "Address: 12 High Street", "地址:上海市…": the label is not part of the address.
std::string withoutLabel(const std::string& line) {
    static const WordSet labels("address adresse addr add adres anschrift direccion indirizzo endereco domicilio sede");
    const auto words = splitAtSpaces(line);
    if (words.size() >= 2 && labels.has(foldedKey(words.front())) && endsWith(words.front(), ":"))
        return trimmed(line.substr(line.find(words.front()) + words.front().size()), " ");
    for (const std::string_view label : {"公司地址", "通讯地址", "地址", "住所", "所在地", "주소"}) {
        if (!startsWith(line, label)) continue;
        const std::string rest = trimmed(line.substr(label.size()), " :");
        return startsWith(rest, ":") ? rest.substr(std::string_view(":").size()) : rest;
    }
    return line;
}

class BlockFinder {
  public:
    explicit BlockFinder(const std::vector<TextLine>& lines) : mLines(lines), mUsed(lines.size(), false) {
        for (const auto& line : lines)
            mEvidence.push_back(addressEvidence(line));
    }

    std::vector<AddressBlock> find() {
        std::vector<std::size_t> order(mLines.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        std::stable_sort(order.begin(), order.end(), [this](auto a, auto b) { return mEvidence[a] > mEvidence[b]; });
        std::vector<AddressBlock> blocks;
        for (const std::size_t core : order) {
            if (mUsed[core] || mEvidence[core] < kCore) continue;
            AddressBlock block = grownFrom(core);
            if (block.likelihood >= kAccepted) {
                blocks.push_back(std::move(block));
            } else {
                for (const std::size_t i : block.lines)
                    mUsed[i] = i == core;
            }
        }
        return blocks;
    }

  private:
    AddressBlock grownFrom(std::size_t core) {
        AddressBlock block{{core}, 0};
        mUsed[core] = true;
        while (growAside(block) || growUp(block) || growDown(block)) {
        }
        float sum = 0;
        for (const std::size_t i : block.lines)
            sum += mEvidence[i];
        const bool isPlain = std::any_of(block.lines.begin(), block.lines.end(),
                                         [this](std::size_t i) { return isPlainly(mLines[i].text()); });
        block.likelihood = isPlain ? std::min(0.95F, 0.2F + sum * 0.6F) : 0;
        return block;
    }

    /// "CHESTNUT HILL,  MASSACHUSETTS 02467": two parts of one printed line that stand far apart.
    bool growAside(AddressBlock& block) {
        const TextLine& first = mLines[block.lines.front()];
        const auto found = nearest([&](std::size_t i) {
            const TextLine& left = mLines[i];
            const float gap = first.box.x - left.box.right();
            const bool sameRow = overlapY(left.box, first.box) > 0.5F * std::min(left.box.h, first.box.h);
            const bool fits = endsWithComma(left) && sameRow && likeType(left, first) && gap > -1;
            return fits && gap < kAside * first.size ? gap : kNotNear;
        });
        if (found) block.lines.insert(block.lines.begin(), *found);
        return found.has_value();
    }

    bool growUp(AddressBlock& block) {
        const TextLine& first = mLines[block.lines.front()];
        const auto found = nearest([&](std::size_t i) {
            const bool fits = mEvidence[i] >= kNeighbour || (endsWithComma(mLines[i]) && mEvidence[i] > 0.04F);
            return fits && neighbours(mLines[i], first) ? first.box.y - mLines[i].box.y : kNotNear;
        });
        if (found) block.lines.insert(block.lines.begin(), *found);
        return found.has_value();
    }

    bool growDown(AddressBlock& block) {
        const TextLine& last = mLines[block.lines.back()];
        const auto found = nearest([&](std::size_t i) {
            const bool continues = endsWithComma(last) && countLetters(mLines[i].text()) >= 2;
            const bool fits = mEvidence[i] >= kNeighbour || continues;
            return fits && neighbours(last, mLines[i]) ? mLines[i].box.y - last.box.y : kNotNear;
        });
        if (found) block.lines.push_back(*found);
        return found.has_value();
    }

    /// Tight lines reach over each other: the closest one comes first.
    template <typename Distance>
    std::optional<std::size_t> nearest(const Distance& distance) {
        std::optional<std::size_t> found;
        float least = kNotNear;
        for (std::size_t i = 0; i < mLines.size(); ++i) {
            const float away = mUsed[i] ? kNotNear : distance(i);
            if (away >= least) continue;
            least = away;
            found = i;
        }
        if (found) mUsed[*found] = true;
        return found;
    }

    const std::vector<TextLine>& mLines;
    std::vector<float> mEvidence;
    std::vector<bool> mUsed;
};

}  // namespace

float addressEvidence(const TextLine& line) {
    const std::string text = line.text();
    if (isEastAsianText(text)) return eastAsianAddress(text);
    return evidence(traitsOf(text), splitAtSpaces(text).size());
}

std::vector<AddressBlock> findAddresses(const std::vector<TextLine>& lines) {
    return BlockFinder(lines).find();
}

std::string joinedAddress(const std::vector<std::string>& lines) {
    std::string joined;
    for (const auto& whole : lines) {
        const std::string line = joined.empty() ? withoutLabel(whole) : whole;
        if (!joined.empty()) joined += endsWith(joined, ",") || endsWith(joined, ";") ? " " : ", ";
        joined += line;
    }
    return joined;
}

}  // namespace qv::recognition
