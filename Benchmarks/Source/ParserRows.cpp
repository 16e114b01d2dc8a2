#include "QVCardScan/QVBizCardParser.h"
#include "Source/Answers.h"
#include "Source/SourceRows.h"
#include "Support/Duel.h"

#include <expat.h>

#include <functional>
#include <stdexcept>

namespace benchmarksupport {

namespace {

constexpr double kMostTimesExpat = 3;
constexpr std::size_t kMiB = std::size_t{1} << 20;

void parseWithExpat(const std::string& answer) {
    const XML_Parser parser = XML_ParserCreate("UTF-8");
    XML_SetElementHandler(
        parser, [](void*, const XML_Char*, const XML_Char**) {}, [](void*, const XML_Char*) {});
    XML_SetCharacterDataHandler(parser, [](void*, const XML_Char*, int) {});
    const XML_Status status = XML_Parse(parser, answer.data(), static_cast<int>(answer.size()), XML_TRUE);
    XML_ParserFree(parser);
    if (status != XML_STATUS_OK) throw std::runtime_error("expat refuses the answer");
}

void parse(const QVString& answer) {
    const auto card = QVBizCardParser().parse(answer, nullptr);
    if (!card || !card->fields()) throw std::runtime_error("the answer holds no card");
}

void addRowAgainstExpat(const std::string& what, const std::function<std::string()>& makeAnswer) {
    addRow("parse: " + what, [makeAnswer] {
        const QVString answer = makeAnswer();
        return rowAgainstFloor([&] { parse(answer); }, [&] { parseWithExpat(*answer); }, "expat", kMostTimesExpat);
    });
}

/// An answer twice as long may take two and a half times as long.
void addRowOfGrowth(const std::string& what, const std::function<std::string(std::size_t halves)>& makeAnswer) {
    addRow("parse: " + what, [makeAnswer] {
        constexpr double kMostGrowth = 2.5;
        const QVString large = makeAnswer(2);
        const QVString small = makeAnswer(1);
        return rowAgainstFloor([&] { parse(large); }, [&] { parse(small); }, "half of it", kMostGrowth);
    });
}

}  // namespace

void addParserRows() {
    addRowAgainstExpat("ordinary answer", ordinaryAnswer);
    addRowAgainstExpat("a million bare items", [] { return answerOfBareItems(1'000'000); });
    addRowAgainstExpat("8 MiB of items", [] { return answerOfItems(8 * kMiB / 120); });
    addRowAgainstExpat("8 MiB in one-byte chunks", [] { return answerInOneByteChunks("address", 8 * kMiB); });
    addRowOfGrowth("a million bare items", [](std::size_t halves) { return answerOfBareItems(500'000 * halves); });
    addRowOfGrowth("8 MiB in one-byte chunks",
                   [](std::size_t halves) { return answerInOneByteChunks("address", 4 * kMiB * halves); });
    addRowOfGrowth("a name of 8 MiB in one-byte chunks",
                   [](std::size_t halves) { return answerInOneByteChunks("name", 4 * kMiB * halves); });
}

}  // namespace benchmarksupport
