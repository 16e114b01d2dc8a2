#include "Fields/Persons.h"

#include "Fields/Company.h"
#include "Fields/Department.h"
#include "Fields/Name.h"
#include "Fields/Title.h"
#include "Fields/Words/Words.h"
#include "Text/Layout.h"
#include "Text/Letters.h"

#include <algorithm>
#include <optional>

namespace qv::recognition {
namespace {

constexpr float kName = 0.42F;
constexpr float kSecondName = 0.7F;  // as likely the name in another script as what its bearer does
constexpr float kTitle = 0.5F;
constexpr float kTitleByPlace = 0.2F;
constexpr float kDepartment = 0.5F;
constexpr float kCompany = 0.42F;
constexpr float kSecondCompany = 0.75F;
constexpr float kWholeForm = 0.05F;  // the rest of a legal form goes with its beginning
constexpr float kSameSize = 1.3F;
constexpr std::size_t kFirmLines = 3;

float asLikelihood(float evidence) {
    return std::clamp(0.35F + 0.5F * evidence, 0.2F, 0.97F);
}

class Sorter {
  public:
    Sorter(const std::vector<TextLine>& lines, const CardFacts& facts)
        : mLines(lines), mFacts(facts), mUsed(lines.size(), false) {
        for (const auto& line : lines) {
            mTitle.push_back(titleEvidence(line));
            mDepartment.push_back(departmentEvidence(line));
        }
    }

    std::vector<Field> sorted() {
        takeName();
        takeTitles();
        takeDepartments();
        takeCompanies();
        return std::move(mFields);
    }

  private:
    void takeName() {
        float best = kName;
        for (std::size_t i = 0; i < mLines.size(); ++i) {
            const float evidence = nameEvidenceAt(i);
            if (evidence > best) {
                best = evidence;
                mName = i;
            }
        }
        if (mName) add(FieldType::Name, *mName, asLikelihood(best));
    }

    /// A name mostly stands right above what its bearer does.
    float nameEvidenceAt(std::size_t i) const {
        float evidence = nameEvidence(mLines[i], mFacts);
        if (evidence < 0) return evidence;
        if (hasTitleBelow(i)) evidence += 0.25F;
        return evidence - std::max(0.F, companyEvidence(mLines[i], mFacts) - 0.5F) * 0.4F;
    }

    bool hasTitleBelow(std::size_t i) const {
        for (std::size_t j = 0; j < mLines.size(); ++j) {
            if (j != i && mTitle[j] >= kTitle && standsBelow(i, j)) return true;
        }
        return false;
    }

    bool standsBelow(std::size_t upper, std::size_t lower) const {
        return mLines[lower].box.centreY() > mLines[upper].box.centreY() &&
               followsInColumn(mLines[upper], mLines[lower]);
    }

    void takeTitles() {
        for (std::size_t i = 0; i < mLines.size(); ++i) {
            if (mUsed[i]) continue;
            const float evidence = titleEvidenceAt(i);
            const bool sure = mTitle[i] >= kTitle && mName && standsBelow(*mName, i);
            const bool firm = !sure && companyEvidence(mLines[i], mFacts) > evidence + 0.15F;
            const bool other = mDepartment[i] > mTitle[i] || firm;
            if (evidence >= kTitle && !other) add(FieldType::Title, i, asLikelihood(evidence));
        }
    }

    float titleEvidenceAt(std::size_t i) const {
        float evidence = mTitle[i];
        const bool below = mName && standsBelow(*mName, i) && mLines[i].size <= mLines[*mName].size;
        if (below && (evidence >= kTitleByPlace || isPlainText(i))) evidence = std::max(evidence, kTitleByPlace) + 0.3F;
        return evidence;
    }

    /// Words without digits in the usual size, nothing that speaks for a firm: right below a name it says what she
    /// does.
    bool isPlainText(std::size_t i) const {
        const std::string text = mLines[i].text();
        return countDigits(text) == 0 && length(text) <= 45 && length(text) >= 3 && mDepartment[i] < kDepartment &&
               mLines[i].confidence() > 60 && nameEvidence(mLines[i], mFacts) < kSecondName &&
               companyEvidence(mLines[i], mFacts) < 0.3F;
    }

    void takeDepartments() {
        for (std::size_t i = 0; i < mLines.size(); ++i) {
            if (mUsed[i] || mDepartment[i] < kDepartment) continue;
            if (companyEvidence(mLines[i], mFacts) > mDepartment[i] + 0.2F) continue;
            add(FieldType::Department, i, asLikelihood(mDepartment[i]));
        }
    }

    struct Firm {
        std::vector<std::size_t> lines;
        float evidence = 0;
    };

    void takeCompanies() {
        bool first = true;
        while (const auto firm = bestFirm()) {
            if (firm->evidence < (first ? kCompany : kSecondCompany)) break;
            addFirm(*firm);
            first = false;
        }
        if (first && !takeLargest()) takeHeading();
    }

    std::optional<Firm> bestFirm() const {
        std::optional<Firm> best;
        for (std::size_t i = 0; i < mLines.size(); ++i) {
            if (mUsed[i]) continue;
            float bonus = 0;
            for (Firm firm{{i}, 0};;) {
                firm.evidence = companyEvidence(joined(firm), mFacts) + bonus;
                if (!best || firm.evidence > best->evidence) best = firm;
                const auto next = firm.lines.size() < kFirmLines ? lineBelow(firm.lines.back()) : std::nullopt;
                if (!next || !continuesFirm(mLines[firm.lines.back()], mLines[*next])) break;
                firm.lines.push_back(*next);
                bonus += isLegalFormsOnly(mLines[*next]) ? kWholeForm : 0.F;
            }
        }
        return best;
    }

    /// A slogan below "ACME TOOLS LTD" is not its second line, "& Co. KG" is.
    static bool continuesFirm(const TextLine& upper, const TextLine& lower) {
        const std::string first = folded(lower.words.front().text);
        if (words::isConjunction(first) || words::isLegalForm(trimmed(first, ".,"))) return true;
        return !endsWithLegalForm(upper) && (!isCapitalised(upper) || isCapitalised(lower));
    }

    static bool isLegalFormsOnly(const TextLine& line) {
        return std::all_of(line.words.begin(), line.words.end(), [](const Word& word) {
            const std::string key = trimmed(folded(word.text), ".,");
            return words::isLegalForm(key) || words::isConjunction(key);
        });
    }

    static bool endsWithLegalForm(const TextLine& line) {
        const std::string last = trimmed(folded(line.words.back().text), ",;:()");
        return line.words.size() > 1 && (words::isLegalForm(last) || words::isLegalForm(trimmed(last, ".")));
    }

    std::optional<std::size_t> lineBelow(std::size_t i) const {
        for (std::size_t j = 0; j < mLines.size(); ++j) {
            const bool sameSize =
                std::max(mLines[i].size, mLines[j].size) <= kSameSize * std::min(mLines[i].size, mLines[j].size);
            if (j != i && !mUsed[j] && sameSize && standsBelow(i, j)) return j;
        }
        return std::nullopt;
    }

    TextLine joined(const Firm& firm) const {
        std::vector<Word> words;
        for (const std::size_t i : firm.lines)
            words.insert(words.end(), mLines[i].words.begin(), mLines[i].words.end());
        return makeLine(std::move(words));
    }

    /// Nothing says what the firm is called: then it is what was printed largest, unless that is hardly larger than the
    /// rest.
    bool takeLargest() {
        std::optional<std::size_t> largest;
        for (std::size_t i = 0; i < mLines.size(); ++i) {
            if (mUsed[i] || mLines[i].confidence() < 75 || countLetters(mLines[i].text()) < 3 ||
                mLines[i].words.size() > 4 || isRunningText(mLines[i]))
                continue;
            if (!largest || mLines[i].size > mLines[*largest].size) largest = i;
        }
        const bool stands = largest && (mLines[*largest].size >= 1.15F * mFacts.usualSize ||
                                        mLines[*largest].size >= 0.7F * mFacts.largestSize);
        if (!stands) return false;
        Firm firm{{*largest}, 0.1F};
        for (auto next = lineBelow(*largest); next && firm.lines.size() < kFirmLines;
             next = lineBelow(firm.lines.back())) {
            if (std::find(firm.lines.begin(), firm.lines.end(), *next) != firm.lines.end()) break;
            firm.lines.push_back(*next);
        }
        addFirm(firm);
        return true;
    }

    /// Cards without another sign of the firm often begin with it: a few capitalised words above the name.
    void takeHeading() {
        if (!mName) return;
        std::optional<std::size_t> highest;
        for (std::size_t i = 0; i < mLines.size(); ++i) {
            const bool above = !mUsed[i] && mLines[i].box.centreY() < mLines[*mName].box.y;
            if (!above || !isHeading(mLines[i])) continue;
            if (!highest || mLines[i].box.y < mLines[*highest].box.y) highest = i;
        }
        if (highest) addFirm({{*highest}, 0.1F});
    }

    /// "où le chemin tourne", "zum": a piece of a sentence.
    static bool isRunningText(const TextLine& line) {
        const auto small = [](const Word& word) {
            const auto first = codePoints(word.text).front();
            return isLetter(first) && !isCapital(first);
        };
        return small(line.words.front()) && std::any_of(line.words.begin(), line.words.end(), [](const Word& word) {
                   return words::isFunction(folded(word.text)) || words::isParticle(folded(word.text));
               });
    }

    static bool isHeading(const TextLine& line) {
        const std::string text = line.text();
        if (line.confidence() < 75 || countDigits(text) > 0 || countLetters(text) < 4 || line.words.size() > 6)
            return false;
        return isCapitalised(line);
    }

    static bool isCapitalised(const TextLine& line) {
        return std::all_of(line.words.begin(), line.words.end(), [](const Word& word) {
            const auto first = codePoints(word.text).front();
            return !isLetter(first) || isCapital(first) || words::isFunction(folded(word.text)) ||
                   words::isConjunction(folded(word.text)) || words::isParticle(folded(word.text));
        });
    }

    void addFirm(const Firm& firm) {
        const TextLine line = joined(firm);
        for (const std::size_t i : firm.lines)
            mUsed[i] = true;
        mFields.push_back({FieldType::Company, line.text(), line.box, line.confidence(), asLikelihood(firm.evidence)});
    }

    void add(FieldType type, std::size_t i, float likelihood) {
        mUsed[i] = true;
        const TextLine& line = mLines[i];
        mFields.push_back({type, trimmed(line.text(), ",;: "), line.box, line.confidence(), likelihood});
    }

    const std::vector<TextLine>& mLines;
    const CardFacts& mFacts;
    std::vector<bool> mUsed;
    std::vector<float> mTitle;
    std::vector<float> mDepartment;
    std::optional<std::size_t> mName;
    std::vector<Field> mFields;
};

}  // namespace

std::vector<Field> findPersonsAndFirms(const std::vector<TextLine>& lines, const CardFacts& facts) {
    return Sorter(lines, facts).sorted();
}

}  // namespace qv::recognition
