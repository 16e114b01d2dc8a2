#include "Integration/Contacts.h"
#include "Integration/RealServers.h"
#include "QVSocialSearch/QVVCardFolder.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace integration;

/// How long one save takes in milliseconds, in the middle of several.
double medianOfSaves(QVAddressBook& book, const std::vector<std::shared_ptr<QVSocialProfile>>& profiles) {
    std::vector<double> times;
    for (const auto& profile : profiles) {
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_FALSE(book.saveProfile(*profile).error);
        times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count());
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

std::vector<std::shared_ptr<QVSocialProfile>> people(const std::string& prefix, int count) {
    std::vector<std::shared_ptr<QVSocialProfile>> profiles;
    for (int i = 0; i < count; ++i)
        profiles.push_back(person(prefix + std::to_string(i), "Pat Person"));
    return profiles;
}

/// As a first save makes them: without a UID yet.
std::vector<std::shared_ptr<QVSocialProfile>> strangers(int count) {
    auto profiles = people("stranger", count);
    for (const auto& profile : profiles)
        profile->setProfileType(0);
    return profiles;
}

void changeAll(const std::vector<std::shared_ptr<QVSocialProfile>>& profiles) {
    for (const auto& profile : profiles)
        profile->setJobTitle("Director");
}

std::string cardOf(const std::string& UID) {
    return "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:" + UID +
           "\r\nFN:Pat Person\r\nN:Person;Pat;;;\r\nEMAIL;TYPE=WORK:" + UID +
           "@example.com\r\nTEL;TYPE=CELL:+1 202 555 0100\r\nORG:Example Ltd.\r\nEND:VCARD\r\n";
}

/// With so many cards in the book, how long does it take to add others, and to change some?
void tellFigures(QVAddressBook& book, const std::string& name, int count) {
    constexpr int kSaves = 9;
    auto some = people("p", std::min(kSaves, count));
    changeAll(some);
    const double updated = medianOfSaves(book, some);
    std::cout << name << " with " << count << " cards: a new card " << medianOfSaves(book, strangers(kSaves))
              << " ms, an update " << updated << " ms (median)\n";
}

TEST(FiguresTest, Folder) {
    for (const int count : {1, 100, 1000}) {
        const testsupport::TemporaryFolder folder;
        for (int i = 0; i < count; ++i)
            folder.write("p" + std::to_string(i) + ".vcf", cardOf("p" + std::to_string(i)));
        QVVCardFolder cards(folder.path());
        tellFigures(cards, "Folder", count);
    }
}

void tellFiguresOf(const RealServer& server, const std::string& name) {
    constexpr int kCount = 100;
    for (int i = 0; i < kCount; ++i) {
        const std::string UID = "p" + std::to_string(i);
        ASSERT_EQ(server.send("PUT", server.collection() + UID + ".vcf", cardOf(UID)).status / 100, 2);
    }
    tellFigures(*server.addressBook(), name, kCount);
}

TEST(FiguresTest, RadicaleServer) {
    tellFiguresOf(Radicale(), "Radicale");
}

TEST(FiguresTest, XandikosServer) {
    tellFiguresOf(Xandikos(), "Xandikos");
}

}  // namespace
