#include "Fields/FieldDecision.h"

#include "Fields/Address.h"
#include "Fields/CardFacts.h"
#include "Fields/Cleaning.h"
#include "Fields/Email.h"
#include "Fields/Handle.h"
#include "Fields/Internet.h"
#include "Fields/Link.h"
#include "Fields/LookAlikes.h"
#include "Fields/Persons.h"
#include "Fields/Phone.h"
#include "Fields/Region.h"
#include "Text/Layout.h"
#include "Text/Letters.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace qv::recognition {
namespace {

constexpr float kLabelDistance = 9;  // in type sizes, from a label to the number on its right

class Decision {
  public:
    Decision(std::vector<TextLine> lines, const std::string& language)
        : mLines(std::move(lines)), mLanguage(language) {}

    std::vector<Field> fields() {
        const std::vector<TextLine> all = mLines;
        takeClaims([](const TextLine& line) { return findEmails(line); });
        takeClaims([](const TextLine& line) { return findLinks(line); });
        takeClaims([](const TextLine& line) { return findHandles(line); });
        agreeOnHosts();
        takePhones(guessedRegion(mFields, all, mLanguage));
        keepText();
        takeAddresses();
        takePersonsAndFirms(all);
        agreeOnNames();
        std::stable_sort(mFields.begin(), mFields.end(),
                         [](const Field& a, const Field& b) { return a.box.y < b.box.y; });
        return std::move(mFields);
    }

  private:
    template <typename Find>
    void takeClaims(const Find& find) {
        std::vector<TextLine> rest;
        for (const auto& line : mLines) {
            const std::vector<Claim> claims = find(line);
            for (const auto& claim : claims) {
                add(line, claim);
                addOtherReadings(line, claim, find);
            }
            auto left = withoutClaims(line, claims);
            std::move(left.begin(), left.end(), std::back_inserter(rest));
        }
        mLines = std::move(rest);
    }

    void add(const TextLine& line, const Claim& claim) {
        const auto at = [&line](std::size_t i) { return line.words.begin() + static_cast<std::ptrdiff_t>(i); };
        const TextLine part = makeLine(std::vector<Word>(at(claim.first), at(claim.end)));
        mFields.push_back({claim.type, claim.text, part.box, part.confidence(), claim.likelihood});
    }

    template <typename Find>
    void addOtherReadings(const TextLine& line, const Claim& claim, const Find& find) {
        for (std::size_t i = claim.first; i < claim.end; ++i) {
            for (const auto& reading : line.words[i].others) {
                TextLine other = line;
                other.words[i].text = reading;
                other.words[i].others.clear();
                for (const Claim& found : find(other)) {
                    const bool same = found.type == claim.type && found.first <= i && i < found.end;
                    if (same && found.text != claim.text) mFields.back().others.push_back(found.text);
                }
            }
        }
    }

    /// The host of a link and of an address are mostly one: where the two differ as misread letters do, the better read
    /// wins.
    void agreeOnHosts() {
        for (auto& email : mFields) {
            if (email.type != FieldType::Email) continue;
            for (auto& link : mFields) {
                if (link.type == FieldType::URL) agree(email, link);
            }
        }
    }

    /// Two readings that say the same are better evidence than one that the engine was sure of.
    static bool agreeByOtherReadings(Field& email, Field& link) {
        const auto readings = [](const Field& field) {
            std::vector<std::string> all{field.text};
            all.insert(all.end(), field.others.begin(), field.others.end());
            return all;
        };
        for (const auto& address : readings(email)) {
            for (const auto& target : readings(link)) {
                if (hostOf(address) != hostOf(target)) continue;
                email.text = address;
                link.text = target;
                return true;
            }
        }
        return false;
    }

    /// "janedoe@" beside "jane.doe@" on a card of Jane Doe: the engine overlooks a dot more often than it invents one.
    void agreeOnNames() {
        for (const auto& name : mFields) {
            if (name.type != FieldType::Name) continue;
            for (auto& email : mFields) {
                if (email.type == FieldType::Email) takeReadingOf(name.text, email);
            }
        }
    }

    static void takeReadingOf(const std::string& name, Field& email) {
        const auto words = foldedWords(name);
        for (const auto& reading : email.others) {
            const std::string local = folded(reading.substr(0, reading.find('@')));
            const bool whole = words.size() >= 2 && local == words.front() + '.' + words.back();
            if (whole && hostOf(reading) == hostOf(email.text)) email.text = reading;
        }
    }

    static void agree(Field& email, Field& link) {
        if (agreeByOtherReadings(email, link)) return;
        const std::string host = hostOf(link.text);
        const std::string own = hostOf(email.text);
        if (areLookAlikes(own, host) && email.confidence > link.confidence) {
            if (const auto at = folded(link.text).find(host); at != std::string::npos)
                link.text.replace(at, host.size(), own);
        } else {
            email.text = snappedToHost(email.text, host);
        }
    }

    void takePhones(const std::string& region) {
        const std::vector<TextLine> lines = mLines;
        takeClaims([&](const TextLine& line) { return findPhones(line, {region, labelBeside(line, lines)}); });
    }

    static std::optional<NumberKind> labelBeside(const TextLine& line, const std::vector<TextLine>& lines) {
        const TextLine* nearest = nullptr;
        for (const auto& label : lines) {
            if (!labelOf(label)) continue;
            const float gap = line.box.x - label.box.right();
            const bool left = overlapY(line.box, label.box) > 0.5F * std::min(line.box.h, label.box.h) && gap > -1 &&
                              gap < kLabelDistance * line.size;
            const bool above = label.box.centreY() < line.box.y && followsInColumn(label, line);
            if (left) return labelOf(label);
            if (above) nearest = &label;
        }
        return nearest == nullptr ? std::nullopt : labelOf(*nearest);
    }

    void keepText() {
        std::vector<TextLine> kept;
        for (const auto& line : mLines) {
            TextLine clean = cleaned(line);
            if (isText(clean) && !isLabelOnly(clean) && !isSideNote(clean)) kept.push_back(std::move(clean));
        }
        mLines = std::move(kept);
    }

    void takeAddresses() {
        std::vector<bool> used(mLines.size(), false);
        for (const auto& block : findAddresses(mLines)) {
            std::vector<std::string> texts;
            std::vector<Word> words;
            for (const std::size_t i : block.lines) {
                used[i] = true;
                texts.push_back(mLines[i].text());
                words.insert(words.end(), mLines[i].words.begin(), mLines[i].words.end());
            }
            const TextLine whole = makeLine(std::move(words));
            mFields.push_back(
                {FieldType::Address, joinedAddress(texts), whole.box, whole.confidence(), block.likelihood});
        }
        std::vector<TextLine> rest;
        for (std::size_t i = 0; i < mLines.size(); ++i) {
            if (!used[i]) rest.push_back(std::move(mLines[i]));
        }
        mLines = std::move(rest);
    }

    void takePersonsAndFirms(const std::vector<TextLine>& all) {
        std::vector<TextLine> text;
        std::copy_if(all.begin(), all.end(), std::back_inserter(text), isText);
        auto found = findPersonsAndFirms(mLines, factsOf(mFields, text));
        std::move(found.begin(), found.end(), std::back_inserter(mFields));
    }

    std::vector<TextLine> mLines;
    const std::string& mLanguage;
    std::vector<Field> mFields;
};

}  // namespace

std::vector<Field> decideFields(const std::vector<TextLine>& lines, const std::string& language) {
    return Decision(lines, language).fields();
}

}  // namespace qv::recognition
