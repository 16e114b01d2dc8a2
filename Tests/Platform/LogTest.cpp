#include "QVPlatform/Log.h"
#include "Support/CapturedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using testing::ElementsAre;
using testing::Pair;
using testing::SizeIs;
using testsupport::CapturedLog;

namespace {

std::mutex systemLogMutex;
std::vector<std::pair<int, std::string>> systemLog;

void addToSystemLog(int priority, const char* format, std::va_list arguments) {
    std::array<char, 512> text{};
    std::vsnprintf(text.data(), text.size(), format, arguments);
    const std::lock_guard lock(systemLogMutex);
    systemLog.emplace_back(priority, text.data());
}

}  // namespace

// These stand before the C library's own, so that the tests see what would reach the system's log. The second is the
// name that a hardened build calls.
extern "C" QV_EXPORT void syslog(int priority, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    addToSystemLog(priority, format, arguments);
    va_end(arguments);
}

extern "C" QV_EXPORT void __syslog_chk(int priority, int, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    addToSystemLog(priority, format, arguments);
    va_end(arguments);
}

namespace {

struct CountingDescription {
    mutable int* count;
    std::string description() const {
        ++*count;
        return "described";
    }
};

std::vector<std::pair<int, std::string>> takeSystemLog() {
    const std::lock_guard lock(systemLogMutex);
    return std::exchange(systemLog, {});
}

TEST(Log, WritesToTheSystemLogWithThePriorityOfTheTag) {
    qv::Log::useSystemLog();
    takeSystemLog();
    for (const char* text : {"<ERROR> e", "<WARNING> w", "<INFO> i", "<Debug> d", "none", "<debug> other case", ""})
        qv::Log::write(text);
    // Numbers of RFC 5424: 3 error, 4 warning, 6 informational, 7 debug.
    EXPECT_THAT(takeSystemLog(),
                ElementsAre(Pair(3, "<ERROR> e"), Pair(4, "<WARNING> w"), Pair(6, "<INFO> i"), Pair(7, "<Debug> d"),
                            Pair(6, "none"), Pair(6, "<debug> other case"), Pair(6, "")));
}

TEST(Log, NeverTakesAMessageForAFormat) {
    qv::Log::useSystemLog();
    takeSystemLog();
    qv::Log::write("%s%n %@ 100%");
    EXPECT_THAT(takeSystemLog(), ElementsAre(Pair(6, "%s%n %@ 100%")));
}

TEST(Log, WritesOnlyTheMessageOfALongerText) {
    qv::Log::useSystemLog();
    takeSystemLog();
    qv::Log::write(std::string_view("message and more").substr(0, 7));
    EXPECT_THAT(takeSystemLog(), ElementsAre(Pair(6, "message")));
}

TEST(Log, GoesToTheHostsSinkAndBack) {
    qv::Log::useSystemLog();
    takeSystemLog();
    {
        const CapturedLog log;
        qv::Log::write("<INFO> to the host");
        EXPECT_THAT(log.messages(), ElementsAre("<INFO> to the host"));
        EXPECT_THAT(takeSystemLog(), SizeIs(0));
    }
    qv::Log::write("<INFO> to the system");
    EXPECT_THAT(takeSystemLog(), ElementsAre(Pair(6, "<INFO> to the system")));
}

TEST(Log, FillsTheFormat) {
    const CapturedLog log;
    qv::Log::write("<INFO> %@ has %d", std::optional<std::string>(), 3);
    qv::Log::write("%@", "%@");
    EXPECT_THAT(log.messages(), ElementsAre("<INFO> (null) has 3", "%@"));
}

TEST(Log, DiscardsBeforeAnythingIsDescribedWhenNobodyListens) {
    int count = 0;
    qv::Log::setSink({});
    EXPECT_FALSE(qv::Log::isEnabled());
    qv::Log::write("%@", CountingDescription{&count});
    qv::Log::write("nobody reads this");
    EXPECT_EQ(count, 0);

    const CapturedLog log;
    EXPECT_TRUE(qv::Log::isEnabled());
    qv::Log::write("%@", CountingDescription{&count});
    EXPECT_EQ(count, 1);
    EXPECT_THAT(log.messages(), ElementsAre("described"));
}

TEST(Log, SwallowsWhatASinkThrows) {
    int calls = 0;
    qv::Log::setSink([&](std::string_view) {
        ++calls;
        throw std::runtime_error("disk full");
    });
    EXPECT_NO_THROW(qv::Log::write("one"));
    EXPECT_NO_THROW(qv::Log::write("%@", 2));
    qv::Log::useSystemLog();
    EXPECT_EQ(calls, 2);
}

TEST(Log, NeverCallsASinkForWhatTheSinkLogs) {
    std::vector<std::string> received;
    const auto sink = [&](std::string_view message) {
        received.emplace_back(message);
        qv::Log::write("from the sink");
        if (received.size() == 2) throw std::runtime_error("disk full");
    };
    qv::Log::setSink(sink);
    for (const char* text : {"one", "two", "three"})
        qv::Log::write(text);
    qv::Log::useSystemLog();
    EXPECT_THAT(received, ElementsAre("one", "two", "three"));
}

TEST(Log, MayReplaceItsSinkWhileOthersLog) {
    constexpr int kThreads = 4;
    constexpr int kMessages = 500;
    std::atomic<int> received{0};
    const auto sink = [&](std::string_view) { ++received; };
    qv::Log::setSink(sink);
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([] {
                for (int j = 0; j < kMessages; ++j)
                    qv::Log::write("<INFO> %d", j);
            });
        }
        for (int i = 0; i < 200; ++i)
            qv::Log::setSink(sink);
    }
    qv::Log::useSystemLog();
    EXPECT_EQ(received, kThreads * kMessages);
}

}  // namespace
