#include "Fields/FieldDecision.h"

#include "Fields/Address.h"
#include "Fields/Agreement.h"
#include "Fields/CardFacts.h"
#include "Fields/Cleaning.h"
#include "Fields/Company.h"
#include "Fields/Email.h"
#include "Fields/Handle.h"
#include "Fields/LabelColumn.h"
#include "Fields/Link.h"
#include "Fields/Persons.h"
#include "Fields/Phone.h"
#include "Fields/Plausibility.h"
#include "Fields/Region.h"
#include "Text/Letters.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace qv::recognition {
namespace {

class Decision {
  public:
    Decision(std::vector<TextLine> lines, const std::string& language)
        : mLines(std::move(lines)), mLanguage(language) {}

    std::vector<Field> fields() {
        const std::vector<TextLine> all = mLines;
        takeClaims([](const TextLine& line) { return findEmails(line); });
        takeClaims([](const TextLine& line) { return findLinks(line); });
        mLines = withHandleLabels(std::move(mLines));
        takeClaims([](const TextLine& line) { return findHandles(line); });
        agreeOnHosts(mFields);
        dropFragments(mFields);
        takePhones(guessedRegion(mFields, all, mLanguage));
        keepText();
        takeAddresses();
        takePersonsAndFirms(all);
        mFields = plausible(std::move(mFields), all);
        agreeOnNames(mFields);
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

    void takePhones(const std::string& region) {
        const std::vector<TextLine> lines = mLines;
        takeClaims([&](const TextLine& line) {
            return findPhones(line, {region, labelBeside(line, lines), regionOfLanguage(mLanguage)});
        });
        giveLostFaxLabel(mFields, lines);
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
        const CardFacts facts = factsOf(mFields, text);
        auto found = findPersonsAndFirms(partedAtFirms(mLines, facts), facts);
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
