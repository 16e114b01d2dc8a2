#include "Fields/CardFacts.h"

#include "Fields/Internet.h"
#include "Fields/Words/WordSet.h"
#include "Text/Letters.h"

#include <algorithm>
#include <utility>

namespace qv::recognition {
namespace {

bool isMailProvider(const std::string& label) {
    static const WordSet set(
        "gmail googlemail yahoo hotmail outlook live msn aol icloud me mac gmx web t-online freenet arcor mail "
        "protonmail proton orange "
        "wanadoo free laposte sfr libero virgilio tiscali alice telefonica terra uol bol ziggo kpnmail planet wp onet "
        "interia o2 seznam "
        "centrum mynet comcast verizon att sbcglobal btinternet bluewin qq naver linkedin facebook instagram xing "
        "twitter example");
    return set.has(label);
}

void addUnlessKnown(std::vector<std::string>& list, std::string text) {
    if (!text.empty() && std::find(list.begin(), list.end(), text) == list.end()) list.push_back(std::move(text));
}

float usualSize(const std::vector<TextLine>& lines) {
    std::vector<std::pair<float, int>> sizes;
    int letters = 0;
    for (const auto& line : lines) {
        sizes.emplace_back(line.size, length(line.text()));
        letters += sizes.back().second;
    }
    std::sort(sizes.begin(), sizes.end());
    int seen = 0;
    for (const auto& [size, count] : sizes) {
        seen += count;
        if (seen * 2 >= letters) return size;
    }
    return 0;
}

}  // namespace

CardFacts factsOf(const std::vector<Field>& found, const std::vector<TextLine>& lines) {
    CardFacts facts;
    for (const auto& field : found) {
        if (field.type != FieldType::Email && field.type != FieldType::URL) continue;
        if (field.type == FieldType::Email)
            addUnlessKnown(facts.emailLocals, folded(field.text.substr(0, field.text.find('@'))));
        const std::string label = registeredLabel(hostOf(field.text));
        if (!isMailProvider(label)) addUnlessKnown(facts.hostLabels, label);
    }
    facts.usualSize = usualSize(lines);
    for (const auto& line : lines)
        facts.largestSize = std::max(facts.largestSize, line.size);
    return facts;
}

}  // namespace qv::recognition
