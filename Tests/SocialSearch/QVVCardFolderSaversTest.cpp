#include "QVSocialSearch/QVVCardFolder.h"
#include "SocialSearch/VCardFolderSupport.h"
#include "Support/ReadFile.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using testing::IsEmpty;
using testsupport::TemporaryFolder;
using namespace vcardtest;

/// A child of the test that does some work; it never returns into the test.
pid_t startChild(const std::function<bool()>& work) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(work() ? 0 : 1);
    return child;
}

int statusOf(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

std::string nameOf(const std::string& who, int number) {
    return who + "-" + std::to_string(number);
}

/// What is in the folder: each UID once, each card whole. Fails the running test otherwise.
std::map<std::string, std::set<std::string>> emailsByUID(QVVCardFolder& folder) {
    std::optional<qv::Error> error;
    std::map<std::string, std::set<std::string>> contacts;
    for (const auto& profile : folder.profiles(&error)) {
        std::set<std::string> emails;
        for (const auto& email : profile->emailAddresses())
            EXPECT_TRUE(emails.insert(email->address()).second) << "twice: " << email->address();
        EXPECT_EQ(profile->formattedName(), "Ada Example");
        EXPECT_TRUE(contacts.emplace(profile->addressBookUID().value_or(""), emails).second) << "a second card";
    }
    EXPECT_FALSE(error);
    return contacts;
}

/// Saves new contacts and adds to one that all savers share, by turns.
bool saveMany(const std::filesystem::path& path, const std::string& who, int count) {
    QVVCardFolder folder(path);
    for (int i = 0; i < count; ++i) {
        const std::string name = nameOf(who, i);
        const auto own = folder.saveProfile(recordWithEmail(name, name + "@own.example"));
        const auto shared = folder.saveProfile(recordWithEmail("shared", name + "@shared.example"));
        if (own.error || shared.error || own.outcome != QVAddressBookSaveOutcome::Created) return false;
    }
    return true;
}

void expectEverything(const std::filesystem::path& path, int savers, int count) {
    QVVCardFolder folder(path);
    auto contacts = emailsByUID(folder);
    EXPECT_EQ(contacts.size(), static_cast<std::size_t>(savers * count + 1));
    EXPECT_EQ(contacts["shared"].size(), static_cast<std::size_t>(savers * count));
    for (int saver = 0; saver < savers; ++saver) {
        for (int i = 0; i < count; ++i) {
            const std::string name = nameOf("s" + std::to_string(saver), i);
            EXPECT_TRUE(contacts["shared"].contains(name + "@shared.example")) << name;
            EXPECT_EQ(contacts[name], std::set<std::string>{name + "@own.example"});
        }
    }
}

TEST(QVVCardFolderSaversTest, ProcessesLoseNothing) {
    constexpr int kSavers = 4;
    constexpr int kCount = 12;
    const TemporaryFolder folder;
    std::vector<pid_t> children;
    for (int i = 0; i < kSavers; ++i)
        children.push_back(startChild([&] { return saveMany(folder.path(), "s" + std::to_string(i), kCount); }));
    for (const pid_t child : children)
        EXPECT_EQ(statusOf(child), 0);
    expectEverything(folder.path(), kSavers, kCount);
}

TEST(QVVCardFolderSaversTest, ThreadsLoseNothing) {
    constexpr int kSavers = 4;
    constexpr int kCount = 12;
    const TemporaryFolder folder;
    std::atomic<int> succeeded{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < kSavers; ++i)
        threads.emplace_back([&, i] { succeeded += saveMany(folder.path(), "s" + std::to_string(i), kCount) ? 1 : 0; });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(succeeded, kSavers);
    expectEverything(folder.path(), kSavers, kCount);
}

/// A program that knows nothing of our lock and replaces the card, as synchronisers do, until it is told to end.
class Stranger {
  public:
    explicit Stranger(std::filesystem::path file) : mFile(std::move(file)), mThread([this] { run(); }) {}
    ~Stranger() {
        mIsOver = true;
        mThread.join();
    }
    Stranger(const Stranger&) = delete;
    Stranger& operator=(const Stranger&) = delete;

  private:
    void run() {
        for (int i = 0; !mIsOver; ++i) {
            const std::filesystem::path next = mFile.parent_path() / ".stranger";
            std::ofstream(next, std::ios::binary)
                << "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:u\r\nFN:Ada Example\r\nN:Example;Ada;;;\r\nX-COUNT:" << i
                << "\r\nEND:VCARD\r\n";
            std::filesystem::rename(next, mFile);
        }
    }

    std::filesystem::path mFile;
    std::atomic<bool> mIsOver{false};
    std::thread mThread;
};

TEST(QVVCardFolderSaversTest, ARecordThatNeverRestsGivesAnEnd) {
    const TemporaryFolder temporary;
    const auto file = temporary.write(
        "u.vcf", "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:u\r\nFN:Ada Example\r\nN:Example;Ada;;;\r\nEND:VCARD\r\n");
    QVVCardFolder folder(temporary.path());
    {
        const Stranger stranger(file);
        for (int i = 0; i < 10; ++i) {
            const auto result = folder.saveProfile(recordWithEmail("u", nameOf("e", i) + "@example.com"));
            EXPECT_TRUE(!result.error || result.error->code == QVAddressBookErrorConflict);
        }
    }
    EXPECT_EQ(emailsByUID(folder).size(), 1U);
    EXPECT_FALSE(folder.saveProfile(recordWithEmail("u", "last@example.com")).error);
    EXPECT_TRUE(emailsByUID(folder)["u"].contains("last@example.com"));
    EXPECT_EQ(filesIn(temporary.path()), std::vector<std::string>{"u.vcf"});
}

/// Saves until it is killed and tells of each save that is done: the number that the child writes is its promise.
bool saveUntilKilled(const std::filesystem::path& path, int promises, int round) {
    QVVCardFolder folder(path);
    for (int i = 0;; ++i) {
        const std::string name = nameOf("r" + std::to_string(round), i);
        const std::string UID = i % 2 == 0 ? nameOf("own", round) : "shared";
        if (folder.saveProfile(recordWithEmail(UID, name + "@example.com")).error) return false;
        const std::string promise = UID + " " + name + "@example.com\n";
        if (::write(promises, promise.data(), promise.size()) != static_cast<ssize_t>(promise.size())) return false;
    }
}

std::string readAll(int descriptor) {
    std::string text;
    std::array<char, 4096> buffer{};
    for (ssize_t count = 0; (count = ::read(descriptor, buffer.data(), buffer.size())) > 0;)
        text.append(buffer.data(), static_cast<std::size_t>(count));
    return text;
}

/// Starts a saver, lets it live for a while and kills it; gives what it promised. Every other one dies after a save or
/// more, however slow the machine is.
std::string killASaver(const std::filesystem::path& path, int round, std::chrono::microseconds life) {
    std::array<int, 2> ends{};
    EXPECT_EQ(::pipe(ends.data()), 0);
    const pid_t child = startChild([&] { return saveUntilKilled(path, ends[1], round); });
    ::close(ends[1]);
    pollfd firstPromise{ends[0], POLLIN, 0};
    const bool waits = round % 2 == 1;
    EXPECT_EQ(::poll(&firstPromise, waits ? 1 : 0, waits ? 60000 : 0), waits ? 1 : 0);
    // When it dies is the point of this: nothing is waited for.
    std::this_thread::sleep_for(life);
    ::kill(child, SIGKILL);
    const std::string promises = readAll(ends[0]);
    ::close(ends[0]);
    const int status = statusOf(child);
    EXPECT_TRUE(WIFSIGNALED(status)) << "the saver failed by itself";
    return promises;
}

void expectPromisesKept(QVVCardFolder& folder, const std::string& promises) {
    const auto contacts = emailsByUID(folder);
    std::istringstream lines(promises);
    std::string UID;
    std::string email;
    while (lines >> UID >> email) {
        ASSERT_TRUE(contacts.contains(UID)) << UID;
        EXPECT_TRUE(contacts.at(UID).contains(email)) << email;
    }
}

/// Another course of kills with each seed; `Tests/kill-saves` sets it to run as many as one likes.
unsigned seedOfKills() {
    constexpr unsigned kUsual = 20240917;
    const char* const text = std::getenv("QV_KILL_SEED");
    return text == nullptr ? kUsual : static_cast<unsigned>(std::strtoul(text, nullptr, 10));
}

TEST(QVVCardFolderSaversTest, KilledSaversLeaveWholeContacts) {
    constexpr int kKills = 200;
    const TemporaryFolder temporary;
    QVVCardFolder folder(temporary.path());
    std::mt19937 random(seedOfKills());
    std::uniform_int_distribution<int> life(200, 12000);
    std::string promises;
    for (int round = 0; round < kKills; ++round) {
        promises += killASaver(temporary.path(), round, std::chrono::microseconds(life(random)));
        if (round % 20 == 19) expectPromisesKept(folder, promises);
        if (HasFatalFailure()) return;
    }
    expectPromisesKept(folder, promises);
    EXPECT_FALSE(promises.empty());
    std::cout << kKills << " kills, " << std::count(promises.begin(), promises.end(), '\n') << " finished saves\n";
    EXPECT_FALSE(folder.saveProfile(recordWithEmail("shared", "last@example.com")).error);
    for (const std::string& name : filesIn(temporary.path()))
        EXPECT_TRUE(name.ends_with(".vcf")) << name;
}

}  // namespace
