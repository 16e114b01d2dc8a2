#include "QVCardScan/QVBizCardParser.h"
#include "QVPlatform/Log.h"
#include "Source/Answers.h"
#include "Support/PeakMemory.h"

#include <cstdio>
#include <string>
#include <string_view>

// Parses an answer of so many bare items, or with so many one-byte chunks, and prints the most memory that this process
// ever held, in KiB.
int main(int argumentCount, char** arguments) {
    if (argumentCount != 3) return 2;
    qv::Log::setSink({});
    const std::size_t count = std::stoul(arguments[2]);
    const bool items = std::string_view(arguments[1]) == "items";
    const auto card = QVBizCardParser().parse(
        items ? benchmarksupport::answerOfBareItems(count) : benchmarksupport::answerInOneByteChunks("address", count),
        nullptr);
    if (!card || !card->fields()) return 1;
    const long memory = benchmarksupport::peakMemory();
    std::printf("%ld\n", memory);
    return memory > 0 ? 0 : 1;
}
