#include "Platform/Preparation.h"
#include "QVPlatform/Log.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
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
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind("VmHWM:", 0) == 0) return std::printf("%ld\n", std::stol(line.substr(6))) > 0 ? 0 : 1;
    }
    return 1;
}
