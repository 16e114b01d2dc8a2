#include "Fields/NumberShape.h"

#include "Text/Letters.h"

#include <algorithm>

namespace qv::recognition {
namespace {

constexpr int kFewestDigits = 5;
constexpr int kWholeNumber = 7;
constexpr std::string_view kMarks = "+()[]-./, ";

bool isDigitByte(char c) {
    return c >= '0' && c <= '9';
}

/// Dashes of every length are one mark; each is three bytes of UTF-8.
bool isLongDash(std::string_view text, std::size_t at) {
    const auto dash = text.substr(at, 3);
    return dash == "–" || dash == "—" || dash == "‐" || dash == "‑" || dash == "−";
}

std::size_t markLength(std::string_view text, std::size_t at) {
    // A comma within a number is a misread dot; one with a space behind it ends what stands before it.
    if (text.substr(at, 2) == ", ") return 0;
    if (isDigitByte(text[at]) || kMarks.find(text[at]) != std::string_view::npos) return 1;
    return isLongDash(text, at) ? 3 : 0;
}

int digitsIn(std::string_view text, std::size_t begin, std::size_t end) {
    return countDigits(text.substr(begin, end - begin));
}

int digitsAhead(std::string_view text, std::size_t at) {
    std::size_t end = at;
    while (end < text.size() && markLength(text, end) > 0)
        end += markLength(text, end);
    return digitsIn(text, at, end);
}

bool startsAnother(std::string_view text, std::size_t begin, std::size_t at) {
    const int before = digitsIn(text, begin, at);
    if (before < kFewestDigits) return false;
    if (text[at] == '+') return true;
    const bool parts = text[at] == '(' || text[at] == '/' || text[at] == ',';
    return parts && before >= kWholeNumber + 2 && digitsAhead(text, at) >= kWholeNumber;
}

NumberRun trimmedRun(std::string_view text, NumberRun run) {
    const auto isEdge = [&](std::size_t i, std::string_view kept) {
        return !isDigitByte(text[i]) && kept.find(text[i]) == std::string_view::npos;
    };
    while (run.begin < run.end && isEdge(run.begin, "+(["))
        ++run.begin;
    while (run.end > run.begin && isEdge(run.end - 1, ""))
        --run.end;
    // An icon before a number is read as a round digit: no number begins with "0 +" or "0 0".
    if (run.end > run.begin + 6 && text[run.begin] == '0' && text[run.begin + 1] == ' ' &&
        (text[run.begin + 2] == '+' || text[run.begin + 2] == '0'))
        run.begin += 2;
    if (run.end < run.begin + 2) return run;
    const bool unopened =
        text[run.begin] == '(' && text.substr(run.begin, run.end - run.begin).find(')') == std::string_view::npos;
    if (unopened) ++run.begin;
    return run;
}

std::vector<std::string> groups(std::string_view number) {
    std::vector<std::string> result(1);
    for (const char c : number) {
        if (isDigitByte(c)) {
            result.back().push_back(c);
        } else if (!result.back().empty()) {
            result.emplace_back();
        }
    }
    if (result.back().empty()) result.pop_back();
    return result;
}

bool isYear(const std::string& group) {
    return group.size() == 4 && (group.compare(0, 2, "19") == 0 || group.compare(0, 2, "20") == 0);
}

}  // namespace

std::vector<NumberRun> numberRuns(std::string_view text) {
    std::vector<NumberRun> runs;
    std::size_t begin = 0;
    const auto finish = [&](std::size_t end) {
        const NumberRun run = trimmedRun(text, {begin, end});
        if (run.end > run.begin && digitsIn(text, run.begin, run.end) >= kFewestDigits) runs.push_back(run);
    };
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t step = markLength(text, at);
        if (step == 0 || startsAnother(text, begin, at)) {
            finish(at);
            begin = step == 0 ? at + 1 : at;
        }
        at += std::max<std::size_t>(step, 1);
    }
    finish(text.size());
    return runs;
}

bool looksLikeDate(std::string_view number) {
    const auto parts = groups(number);
    if (parts.size() != 3 || number.find('(') != std::string_view::npos || number.find('+') != std::string_view::npos)
        return false;
    const bool yearLast = isYear(parts[2]) && parts[0].size() <= 2 && parts[1].size() <= 2;
    const bool yearFirst = isYear(parts[0]) && parts[1].size() <= 2 && parts[2].size() <= 2;
    return yearLast || yearFirst;
}

bool looksLikeYears(std::string_view number) {
    const auto parts = groups(number);
    return parts.size() == 2 && isYear(parts[0]) && isYear(parts[1]);
}

bool looksLikePostcode(std::string_view number) {
    const auto parts = groups(number);
    return parts.size() == 2 && parts[0].size() == 5 && parts[1].size() == 4 && number.size() == 10;
}

bool hasPhoneMarks(std::string_view number) {
    if (number.find('+') != std::string_view::npos || number.find('(') != std::string_view::npos) return true;
    return groups(number).size() >= 3;
}

std::string tidyNumber(std::string_view number) {
    std::string tidy(number);
    const bool dotted = std::count(tidy.begin(), tidy.end(), '.') >= 1;
    const bool oneComma = std::count(tidy.begin(), tidy.end(), ',') == 1;
    if (dotted && oneComma) std::replace(tidy.begin(), tidy.end(), ',', '.');
    for (auto at = tidy.find(" -"); at != std::string::npos; at = tidy.find(" -")) {
        if (at + 2 < tidy.size() && tidy[at + 2] == ' ') break;
        tidy.erase(at, 1);
    }
    return simplified(tidy);
}

}  // namespace qv::recognition
