#include "Soak/PlannedCard.h"

#include "QVCardScan/QVCardProcessingError.h"

#include <array>
#include <charconv>
#include <cstddef>

namespace soak {

namespace {

constexpr int kPlans = 20;
constexpr std::string_view kTokenStart = "card-";

/// Of twenty cards eleven have one side and three have two; six go wrong, each in its own way.
Plan planOf(int number) {
    switch (number % kPlans) {
        case 11:
        case 12:
        case 13:
            return Plan::TwoSides;
        case 14:
            return Plan::NoCard;
        case 15:
            return Plan::BrokenPicture;
        case 16:
            return Plan::Unavailable;
        case 17:
            return Plan::NoXML;
        case 18:
            return number / kPlans % 2 == 0 ? Plan::NoText : Plan::Reset;
        case 19:
            return Plan::Cancelled;
        default:
            return Plan::OneSide;
    }
}

/// Names as they are printed, and as they are repaired.
struct NamePair {
    const char* printed;
    const char* repaired;
};

constexpr std::array<NamePair, 5> kGivenNames{
    {{"JOHN F", "John F."}, {"Dr. jane", "Dr. Jane"}, {"JÜRGEN", "Jürgen"}, {"Ανδρέας", "Ανδρέας"}, {"mary", "Mary"}}};
constexpr std::array<NamePair, 4> kSurnames{
    {{"SMITH", "Smith"}, {"MÜLLER", "Müller"}, {"o'neill jr", "O'Neill Jr."}, {"Example, Ph.D.", "Example Ph.D."}}};

template <typename Table>
const auto& rowOf(const Table& table, int number) {
    return table[static_cast<std::size_t>(number) % table.size()];
}

std::string item(const char* type, const std::string& text) {
    return std::string("<item fldType=\"") + type + R"(" x="60" y="80" w="400" h="48" orient="0"><t w="91">)" + text +
           "</t></item>";
}

std::string result(const std::string& items) {
    return R"(<recoIndex lang="en" objWidth="1024" objHeight="600">)" + items + "</recoIndex>";
}

}  // namespace

PlannedCard::PlannedCard(int number) : mNumber(number), mPlan(planOf(number)) {
}

bool PlannedCard::hasPerson() const {
    return mPlan == Plan::OneSide || mPlan == Plan::TwoSides || mPlan == Plan::Cancelled;
}

std::optional<int> PlannedCard::numberIn(std::string_view text) {
    if (!text.starts_with(kTokenStart)) return std::nullopt;
    text.remove_prefix(kTokenStart.size());
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end == text.data()) return std::nullopt;
    return number;
}

std::string PlannedCard::printedName() const {
    return std::string(rowOf(kGivenNames, mNumber).printed) + " " + rowOf(kSurnames, mNumber / 5).printed;
}

std::string PlannedCard::name() const {
    return std::string(rowOf(kGivenNames, mNumber).repaired) + " " + rowOf(kSurnames, mNumber / 5).repaired;
}

/// Every other one is printed so that its last dot is lost.
std::string PlannedCard::printedEmail() const {
    return "Card-" + std::to_string(mNumber) + (mNumber % 2 == 0 ? "@Example.COM" : "@examplecom");
}

std::string PlannedCard::email() const {
    return "card-" + std::to_string(mNumber) + "@example.com";
}

std::vector<std::string> PlannedCard::phones() const {
    std::vector<std::string> numbers;
    for (int line = 0; line <= mNumber % 4; ++line)
        numbers.push_back("+1 202 555 01" + std::to_string(10 + (mNumber + line) % 90));
    return numbers;
}

std::string PlannedCard::frontResult() const {
    std::string items =
        item("NAME", printedName()) + item("TITLE", "Head of Section " + std::to_string(mNumber % 97)) +
        item("COMPANY", "Example &amp; Sons " + std::string(static_cast<std::size_t>(mNumber % 40), 'x'));
    if (hasBack()) return result(items);
    items += item("EMAIL", printedEmail()) + item("ADDRESS", "10 Main Street, Springfield 01101");
    for (const std::string& phone : phones())
        items += item("PHONE", phone);
    return result(items + item("URL", "www.example.com/" + std::to_string(mNumber)));
}

std::string PlannedCard::backResult() const {
    std::string items = item("EMAIL", printedEmail()) + item("TWITTER", "@card" + std::to_string(mNumber));
    for (const std::string& phone : phones())
        items += item("PHONE", phone);
    return result(items);
}

std::vector<long> PlannedCard::errorCodes() const {
    switch (mPlan) {
        case Plan::BrokenPicture:
        case Plan::Unavailable:
        case Plan::NoText:
            return {QVCardProcessingErrorUnreadableResult};
        case Plan::Reset:
            return {QVCardProcessingErrorConnectionFailed};
        default:
            return {};
    }
}

}  // namespace soak
