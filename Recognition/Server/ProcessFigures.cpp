#include "Server/ProcessFigures.h"

#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#if defined(__GLIBC__) && __GLIBC_PREREQ(2, 33)
#include <malloc.h>
#define QV_HAS_MALLINFO2 1
#endif

namespace qv::recognition {
namespace {

/// From the program's own start, before anything else of it runs: near enough, and the same everywhere.
const double kStart = std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();

double secondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

std::optional<double> processorSeconds() {
    rusage usage{};
    if (::getrusage(RUSAGE_SELF, &usage) != 0) return std::nullopt;
    return secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
}

std::optional<double> heapBytes() {
#ifdef QV_HAS_MALLINFO2
    const auto info = ::mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
#else
    return std::nullopt;
#endif
}

std::optional<double> mostFiles() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return std::nullopt;
    return static_cast<double>(limit.rlim_cur);
}

std::optional<double> openFiles() {
    std::error_code error;
    const std::filesystem::directory_iterator files("/proc/self/fd", error);
    if (error) return std::nullopt;
    // The one that is being looked through with is not counted.
    return static_cast<double>(std::distance(begin(files), end(files)) - 1);
}

void readMemory(ProcessFigures& figures) {
    std::ifstream file("/proc/self/statm");
    double size = 0;
    double resident = 0;
    if (!(file >> size >> resident)) return;
    const auto page = static_cast<double>(::sysconf(_SC_PAGESIZE));
    figures.virtualBytes = size * page;
    figures.residentBytes = resident * page;
}

}  // namespace

ProcessFigures processFigures() {
    ProcessFigures figures;
    readMemory(figures);
    figures.heapBytes = heapBytes();
    figures.processorSeconds = processorSeconds();
    figures.startTime = kStart;
    figures.openFiles = openFiles();
    figures.mostFiles = mostFiles();
    return figures;
}

}  // namespace qv::recognition
