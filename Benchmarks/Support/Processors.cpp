#include "Support/Processors.h"

#include <unistd.h>

#include <fstream>

namespace benchmarksupport {

// The last one: interrupts tend to come to the first.
void stayOnOneProcessor() {
    cpu_set_t allowed;
    if (::sched_getaffinity(0, sizeof allowed, &allowed) != 0) return;
    std::size_t last = 0;
    for (std::size_t index = 0; index < CPU_SETSIZE; ++index) {
        if (CPU_ISSET(index, &allowed)) last = index;
    }
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(last, &one);
    static_cast<void>(::sched_setaffinity(0, sizeof one, &one));
}

AllProcessors::AllProcessors() {
    CPU_ZERO(&mBefore);
    static_cast<void>(::sched_getaffinity(0, sizeof mBefore, &mBefore));
    cpu_set_t all;
    CPU_ZERO(&all);
    const long count = ::sysconf(_SC_NPROCESSORS_CONF);
    for (long index = 0; index < count && index < CPU_SETSIZE; ++index)
        CPU_SET(static_cast<std::size_t>(index), &all);
    static_cast<void>(::sched_setaffinity(0, sizeof all, &all));
}

AllProcessors::~AllProcessors() {
    static_cast<void>(::sched_setaffinity(0, sizeof mBefore, &mBefore));
}

std::string nameOfProcessor() {
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);) {
        if (line.rfind("model name", 0) == 0) return line.substr(line.find(':') + 2);
    }
    return "unknown processor";
}

}  // namespace benchmarksupport
