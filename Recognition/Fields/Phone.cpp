#include "Fields/Phone.h"

#include "Fields/NumberShape.h"
#include "Fields/NumberingPlan.h"
#include "Fields/Postcode.h"
#include "Text/Letters.h"

#include <algorithm>
#include <string_view>

namespace qv::recognition {
namespace {

constexpr int kShortestLabelled = 5;
constexpr int kShortest = 7;
constexpr int kSure = 9;
constexpr int kLongest = 16;
constexpr std::size_t kCountryLetters = 4;  // and the space before them

/// A line's text together with the word that each of its bytes belongs to.
struct IndexedText {
    std::string text;
    std::vector<std::size_t> wordAt;

    std::vector<std::string> words;

    explicit IndexedText(const TextLine& line) {
        for (std::size_t i = 0; i < line.words.size(); ++i) {
            if (i > 0) add(" ", i);
            words.push_back(i > 0 ? withZeros(line.words[i].text, words.back()) : line.words[i].text);
            add(withoutColons(words.back(), text), i);
        }
    }

    /// "+33 6 39 98 84:67": a dot or a space of a number with a country code that was read as a colon.
    static std::string withoutColons(const std::string& word, const std::string& before) {
        const bool follows = before.find('+') != std::string::npos && countDigits(word) >= 2;
        if (!follows || word.find_first_not_of("0123456789:") != std::string::npos) return word;
        std::string spaced = word;
        std::replace(spaced.begin(), spaced.end(), ':', ' ');
        return spaced;
    }

    /// Old-style zeros look like the letter: "+31 (0)30 ooo oo27". Only after digits, and where nothing else is left.
    static std::string withZeros(const std::string& word, const std::string& before) {
        const bool follows = countDigits(before) > 0 && countLetters(before) == 0;
        if (!follows || word.size() < 2 || word.find_first_not_of("0123456789oO()-./") != std::string::npos)
            return word;
        std::string zeros = word;
        std::replace_if(
            zeros.begin(), zeros.end(), [](char c) { return c == 'o' || c == 'O'; }, '0');
        return zeros;
    }

    void add(std::string_view part, std::size_t word) {
        text += part;
        wordAt.resize(text.size(), word);
    }
};

struct Label {
    NumberKind kind = NumberKind::Phone;
    std::size_t length = 0;  ///< in bytes, from the number outwards
};

/// The last one or two words before a number, glued or not: "Tel", "toll free".
std::optional<Label> labelBefore(std::string_view before) {
    const auto end = before.find_last_not_of(" :.-=>)|");
    if (end == std::string_view::npos) return std::nullopt;
    std::size_t start = end + 1;
    std::optional<Label> found;
    for (int words = 0; words < 3 && start > 0; ++words) {
        const auto last = before.find_last_not_of(' ', start - 1);
        if (last == std::string_view::npos) break;
        const auto space = before.find_last_of(" |;", last);
        start = space == std::string_view::npos ? 0 : space + 1;
        const auto kind = numberLabel(before.substr(start, end + 1 - start), /*mayBeLetter=*/words == 0);
        if (kind) found = Label{*kind, before.size() - start};
        // "VAT No. GB 123 …": a country's letters stand between the label and the number.
        const std::string_view word = before.substr(start, last + 1 - start);
        const bool isNear = end - last <= kCountryLetters;
        if (!found && isNear && numberLabel(word, false) == NumberKind::Other)
            found = Label{NumberKind::Other, before.size() - start};
    }
    return found;
}

/// "(mobile)" or "fax" after a number, up to the end of the line.
std::optional<Label> labelAfter(std::string_view after) {
    const std::string word = trimmed(after, " ()[]:.,;");
    if (word.empty() || word.find(' ') != std::string::npos) return std::nullopt;
    const auto kind = numberLabel(word, /*mayBeLetter=*/after.find('(') != std::string_view::npos);
    if (!kind || *kind == NumberKind::Other) return std::nullopt;
    return Label{*kind, after.size()};
}

/// " ext. 12", " x12", " Durchwahl 12": belongs to the number before it.
std::size_t extensionLength(std::string_view after) {
    const std::string lower = folded(after);
    for (const std::string_view mark : {", ext. ", ", ext ", ", x", " - ext. ", " ext. ", " ext.", " ext ",
                                        " ext: ", " extension ", " x ", " x", " dw ", " durchwahl ", " poste "}) {
        if (!startsWith(lower, mark)) continue;
        std::size_t end = mark.size();
        while (end < after.size() && after[end] >= '0' && after[end] <= '9')
            ++end;
        if (end > mark.size() && lower.size() == after.size()) return end;
    }
    return 0;
}

bool isNoPhone(std::string_view number, bool labelled) {
    const int digits = countDigits(number);
    if (digits > kLongest || looksLikeDate(number) || looksLikeYears(number)) return true;
    if (labelled) return digits < kShortestLabelled;
    return digits < kShortest || looksLikePostcode(number);
}

/// How likely an unlabelled run is a telephone number, seen beside the other letters of its line.
float likelihoodUnlabelled(std::string_view number, int otherLetters, const std::string& region) {
    const int digits = countDigits(number);
    const PlanAdvice advice = planAdvice(number, region);
    const bool marked = hasPhoneMarks(number);
    if (otherLetters >= 4 && !(marked && digits >= kSure) && !(advice.valid && digits >= kSure)) return 0;
    if (!marked && digits < kSure && !advice.valid && otherLetters > 0) return 0;
    float likelihood = marked || digits >= kSure ? 0.86F : 0.6F;
    if (advice.valid) likelihood += 0.07F;
    return likelihood;
}

FieldType typeOf(const std::optional<NumberKind>& label, bool mobileRange) {
    if (!label) return mobileRange ? FieldType::Mobile : FieldType::Phone;
    if (*label == NumberKind::Mobile) return FieldType::Mobile;
    return *label == NumberKind::Fax ? FieldType::Fax : FieldType::Phone;
}

class PhoneFinder {
  public:
    PhoneFinder(const TextLine& line, const PhoneContext& context) : mIndexed(line), mContext(context) {}

    std::vector<Claim> find() {
        for (const auto& run : numberRuns(mIndexed.text))
            take(run);
        return std::move(mClaims);
    }

  private:
    void take(const NumberRun& run) {
        const std::string_view text = mIndexed.text;
        const std::string_view after = text.substr(run.end);
        const auto before = labelBefore(text.substr(mUsed, run.begin - mUsed));
        const auto behind = before ? std::nullopt : labelAfter(after);
        std::optional<NumberKind> kind = before   ? std::optional(before->kind)
                                         : behind ? std::optional(behind->kind)
                                                  : std::nullopt;
        if (!kind && run.begin <= mUsed + 2) kind = mClaims.empty() ? mContext.label : mLastKind;
        const std::string_view number = text.substr(run.begin, run.end - run.begin);
        if (isNoPhone(number, kind.has_value()) || kind == NumberKind::Other) return;
        if (!kind && number.front() != '+' && holdsPostcode(run)) return;
        const float likelihood = kind ? 0.95F : likelihoodUnlabelled(number, otherLetters(number), mContext.region);
        if (likelihood <= 0) return;
        const std::size_t extension = behind ? 0 : extensionLength(after);
        const std::size_t begin = run.begin - (before ? before->length : 0);
        const std::size_t end = run.end + (behind ? behind->length : extension);
        const bool own = before || behind;
        const auto type = !own && kind == NumberKind::Mobile && planAdvice(number, mContext.region).fixed
                              ? FieldType::Phone
                              : typeOf(kind, !kind && isMobile(number));
        add(type, begin, end, tidyNumber(number) + std::string(text.substr(run.end, extension)), likelihood);
        mLastKind = kind;
        mUsed = end;
    }

    bool holdsPostcode(const NumberRun& run) const {
        for (std::size_t i = mIndexed.wordAt[run.begin]; i <= mIndexed.wordAt[run.end - 1]; ++i) {
            if (startsPostcode(mIndexed.words, i)) return true;
        }
        return false;
    }

    /// Without a country code the range has to be one for mobiles in the language's own country, too, if it is used
    /// there: "06 …" is Rome on an Italian card, whatever country another number is from.
    bool isMobile(std::string_view number) const {
        if (!planAdvice(number, mContext.region).mobile) return false;
        if (number.front() == '+' || mContext.languageRegion.empty()) return true;
        const PlanAdvice own = planAdvice(number, mContext.languageRegion);
        return own.mobile || !(own.valid || own.fixed);
    }

    int otherLetters(std::string_view number) const { return countLetters(mIndexed.text) - countLetters(number); }

    void add(FieldType type, std::size_t begin, std::size_t end, std::string number, float likelihood) {
        begin = std::min(mIndexed.text.find_first_not_of(' ', begin), end - 1);
        std::size_t first = mIndexed.wordAt[begin];
        if (!mClaims.empty()) first = std::max(first, mClaims.back().end - (sharesWord(first) ? 1 : 0));
        mClaims.push_back({type, first, mIndexed.wordAt[end - 1] + 1, std::move(number), likelihood});
    }

    bool sharesWord(std::size_t word) const { return mClaims.back().end == word + 1; }

    IndexedText mIndexed;
    const PhoneContext& mContext;
    std::vector<Claim> mClaims;
    std::optional<NumberKind> mLastKind;
    std::size_t mUsed = 0;
};

}  // namespace

std::vector<Claim> findPhones(const TextLine& line, const PhoneContext& context) {
    return PhoneFinder(line, context).find();
}

std::optional<NumberKind> labelOf(const TextLine& line) {
    const std::string text = line.text();
    if (line.words.size() > 2 || countDigits(text) > 0) return std::nullopt;
    return numberLabel(text, /*mayBeLetter=*/true);
}

std::string countryOfNumber(std::string_view text) {
    for (const auto& run : numberRuns(text)) {
        const auto number = text.substr(run.begin, run.end - run.begin);
        const std::string digits = trimmed(number, "( ");
        if (startsWith(digits, "+")) {
            if (auto country = planCountry(digits); !country.empty()) return country;
        }
    }
    return {};
}

}  // namespace qv::recognition
