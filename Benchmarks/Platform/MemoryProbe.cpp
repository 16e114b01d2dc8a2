#include "Platform/Preparation.h"
#include "QVPlatform/Log.h"
#include "Support/PeakMemory.h"

#include <cstdio>
#include <fstream>
#include <utility>

// Prepares the picture of a file and prints the most memory that this process ever held, in KiB.
int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) return 2;
    qv::Log::setSink({});
    std::ifstream file(arguments[1], std::ios::binary | std::ios::ate);
    qv::Data data(static_cast<std::size_t>(file.tellg()));
    file.seekg(0);
    file.read(reinterpret_cast<char*>(data.data()), static_cast<std::streamsize>(data.size()));
    if (!file || benchmarksupport::prepared(std::move(data)).empty()) return 1;
    const long memory = benchmarksupport::peakMemory();
    std::printf("%ld\n", memory);
    return memory > 0 ? 0 : 1;
}
