#include "Faults/Aftermath.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define QV_MEASURES_MEMORY false
#else
#define QV_MEASURES_MEMORY true
#endif

namespace faults {

namespace {

constexpr std::chrono::seconds kPatience(20);

/// By the system's clock, whatever the others run by.
std::chrono::nanoseconds now() {
    timespec time{};
    ::syscall(SYS_clock_gettime, CLOCK_MONOTONIC, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

std::size_t entriesOf(const char* folder) {
    std::size_t count = 0;
    std::error_code gone;
    for (std::filesystem::directory_iterator entry(folder, gone), end; !gone && entry != end; entry.increment(gone))
        ++count;
    return count;
}

/// A line of the process's own figures, in KiB.
std::size_t figure(const std::string& name) {
    std::ifstream figures("/proc/self/status");
    for (std::string line; std::getline(figures, line);) {
        if (line.starts_with(name + ":")) return std::stoul(line.substr(name.size() + 1));
    }
    return 0;
}

template <typename Count>
std::size_t settled(Count count, std::size_t wanted, std::chrono::nanoseconds end) {
    std::size_t found = count();
    while (found != wanted && now() < end) {
        std::this_thread::yield();
        found = count();
    }
    return found;
}

}  // namespace

// Threads of the test before may still be on their way out.
Aftermath::Aftermath(const std::function<void()>& warmUp, std::size_t threadsOfTest)
    : mThreads(settled(threads, 1 + threadsOfTest, now() + kPatience / 4)) {
    warmUp();
    EXPECT_EQ(settled(threads, mThreads, now() + kPatience), mThreads) << "threads of what was done before";
    mDescriptors = descriptors();
    // What was freed before is not what the fault costs.
    ::malloc_trim(0);
    // "5" sets the high-water mark back to what is used now.
    std::ofstream("/proc/self/clear_refs") << 5;
    mKilobytes = figure("VmRSS");
    mBegin = now();
}

std::size_t Aftermath::threads() {
    return entriesOf("/proc/self/task");
}

std::size_t Aftermath::descriptors() {
    return entriesOf("/proc/self/fd");
}

void Aftermath::expectAsBefore(std::size_t mostMegabytes, std::chrono::seconds mostTime) const {
    const auto end = now();
    const std::size_t peak = figure("VmHWM");
    EXPECT_EQ(settled(threads, mThreads, end + kPatience), mThreads) << "threads";
    EXPECT_EQ(settled(descriptors, mDescriptors, end + kPatience), mDescriptors) << "descriptors";
    const std::size_t grown = peak > mKilobytes ? (peak - mKilobytes) / 1024 : 0;
    const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(end - mBegin).count();
    testing::Test::RecordProperty("milliseconds", static_cast<int>(milliseconds));
    testing::Test::RecordProperty("megabytes", static_cast<int>(grown));
    EXPECT_LT(end - mBegin, mostTime);
    if (QV_MEASURES_MEMORY) {
        EXPECT_LE(grown, mostMegabytes) << "MiB";
    }
}

}  // namespace faults
