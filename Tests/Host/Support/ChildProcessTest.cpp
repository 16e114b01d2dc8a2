#include "Support/ChildProcess.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>

namespace {

using namespace std::chrono_literals;
using qvhost::ChildProcess;
using testing::Eq;
using testing::Optional;

std::unique_ptr<ChildProcess> startShell(const std::string& script) {
    int error = 0;
    auto process = ChildProcess::start("/bin/sh", {"-c", script}, "QV_TEST_HIDDEN", error);
    EXPECT_EQ(error, 0);
    return process;
}

TEST(ChildProcess, IsSpokenToOverItsInputAndOutput) {
    const auto process = startShell("read line; echo \"got $line\"; echo next");
    EXPECT_TRUE(process->write("hello\n"));
    EXPECT_THAT(process->readLine(30s), Optional(Eq("got hello")));
    EXPECT_THAT(process->readLine(30s), Optional(Eq("next")));
    EXPECT_EQ(process->readLine(30s), std::nullopt);
    EXPECT_TRUE(process->endsWithin(30s));
}

TEST(ChildProcess, HidesVariablesByTheirBeginning) {
    ::setenv("QV_TEST_HIDDEN", "secret", 1);
    ::setenv("QV_TEST_HIDDEN_TOO", "secret", 1);
    ::setenv("QV_TEST_SHOWN", "seen", 1);
    const auto process = startShell("echo \"$QV_TEST_HIDDEN$QV_TEST_HIDDEN_TOO-$QV_TEST_SHOWN\"");
    EXPECT_THAT(process->readLine(30s), Optional(Eq("-seen")));
    ::unsetenv("QV_TEST_HIDDEN");
    ::unsetenv("QV_TEST_HIDDEN_TOO");
    ::unsetenv("QV_TEST_SHOWN");
}

TEST(ChildProcess, HoldsNoConnectionOfThisProgram) {
    int ends[2];
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    const auto process = startShell("echo started; read line");
    ASSERT_THAT(process->readLine(30s), Optional(Eq("started")));
    ::close(ends[0]);
    pollfd other{ends[1], POLLIN, 0};
    EXPECT_EQ(::poll(&other, 1, 30000), 1);
    char byte = 0;
    EXPECT_EQ(::recv(ends[1], &byte, 1, MSG_DONTWAIT), 0) << "the end of the connection";
    ::close(ends[1]);
}

TEST(ChildProcess, ThatSaysNothingIsNotWaitedForLonger) {
    const auto process = startShell("read line");
    EXPECT_EQ(process->readLine(20ms), std::nullopt);
    EXPECT_FALSE(process->endsWithin(0ms));
}

TEST(ChildProcess, ThatSaysTooMuchIsNotListenedTo) {
    const auto process = startShell("head -c 100000 /dev/zero | tr '\\0' x; read line");
    EXPECT_EQ(process->readLine(30s), std::nullopt);
}

TEST(ChildProcess, ThatIgnoresEverythingIsEndedAllTheSame) {
    const testsupport::TemporaryFolder folder;
    auto process = startShell("trap '' TERM; echo ready; while true; do sleep 0.05; done");
    EXPECT_THAT(process->readLine(30s), Optional(Eq("ready")));
    process.reset();
}

TEST(ChildProcess, NoticesThatNobodyReads) {
    std::signal(SIGPIPE, SIG_IGN);  // as the program does when it starts
    const auto process = startShell("exec <&-; echo ready; exec sleep 100");
    EXPECT_THAT(process->readLine(30s), Optional(Eq("ready")));
    EXPECT_FALSE(process->write("x"));
}

TEST(ChildProcess, ThatCannotBeStartedSaysWhy) {
    int error = 0;
    EXPECT_EQ(ChildProcess::start("/nowhere/at/all", {}, "", error), nullptr);
    EXPECT_EQ(error, ENOENT);
}

TEST(ChildProcess, DoesNotHoldThePipesOfAnother) {
    const std::string countFiles = "ls /proc/self/fd | wc -l";
    const auto alone = startShell(countFiles)->readLine(30s);
    const auto waiting = startShell("echo ready; read line");
    EXPECT_THAT(waiting->readLine(30s), Optional(Eq("ready")));
    const auto besideAnother = startShell(countFiles)->readLine(30s);
    ASSERT_TRUE(alone);
    EXPECT_EQ(besideAnother, alone);
}

}  // namespace
