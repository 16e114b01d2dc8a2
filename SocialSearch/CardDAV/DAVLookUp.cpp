#include "CardDAV/DAVLookUp.h"

#include "CardDAV/DAVAddress.h"
#include "Merging/EntryMeaning.h"

#include <algorithm>
#include <optional>

namespace {

/// A visit that shows what matches, and nothing twice.
DAVVisit matching(const DAVLookUp::Matches& matches, const DAVVisit& visit, std::set<std::string>& shown) {
    return
        [&](const DAVCard& card) { return !matches(card) || !shown.insert(plainPath(card.url)).second || visit(card); };
}

/// A value that a server's search can be tried with.
struct Sample {
    std::string text;
    std::string path;
};

std::optional<Sample> sampleIn(std::string_view property, const DAVCard& card) {
    for (const QVVCardProperty* candidate : card.card.propertiesNamed(property)) {
        const std::string text = trimmed(candidate->text());
        if (!text.empty()) return Sample{text, plainPath(card.url)};
    }
    return std::nullopt;
}

}  // namespace

bool DAVTrust::has(std::string_view property) const {
    const std::lock_guard lock(mMutex);
    return mProperties.find(property) != mProperties.end();
}

void DAVTrust::add(std::string_view property) {
    const std::lock_guard lock(mMutex);
    mProperties.emplace(property);
}

void DAVLookUp::visit(std::string_view property, const std::string& text, const Matches& matches, Problems& problems,
                      const DAVVisit& visit) {
    std::set<std::string> shown;
    const bool isAnswered = mCollection.visitMatches(property, text, problems, matching(matches, visit, shown));
    if (problems.hasFailed() || !shown.empty() || (isAnswered && mTrust.has(property))) return;
    const auto hrefs = mCollection.list(problems);
    if (!hrefs || (isAnswered && earnsTrust(property, *hrefs))) return;
    mCollection.visitCards(*hrefs, problems, matching(matches, visit, shown));
}

void DAVLookUp::visitByReading(const Matches& matches, Problems& problems, const DAVVisit& visit) {
    std::set<std::string> shown;
    if (const auto hrefs = mCollection.list(problems)) {
        mCollection.visitCards(*hrefs, problems, matching(matches, visit, shown));
    }
}

bool DAVLookUp::earnsTrust(std::string_view property, const std::vector<std::string>& hrefs) {
    constexpr std::ptrdiff_t kCardsTried = 10;
    Problems ignored;
    std::optional<Sample> sample;
    const auto count = std::min<std::ptrdiff_t>(kCardsTried, static_cast<std::ptrdiff_t>(hrefs.size()));
    mCollection.visitCards({hrefs.begin(), hrefs.begin() + count}, ignored, [&](const DAVCard& card) {
        sample = sampleIn(property, card);
        return !sample;
    });
    if (!sample) return false;
    bool isFound = false;
    mCollection.visitMatches(property, sample->text, ignored, [&](const DAVCard& card) {
        isFound = plainPath(card.url) == sample->path;
        return !isFound;
    });
    if (isFound) mTrust.add(property);
    return isFound;
}
