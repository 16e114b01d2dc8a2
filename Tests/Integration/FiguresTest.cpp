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

/// Fills a book with so many cards and tells how long it takes to add others and to change some.
void tellFigures(QVAddressBook& book, const std::string& name, int count) {
    constexpr int kSaves = 9;
    const auto there = people("p", count);
    for (const auto& profile : there)
        ASSERT_FALSE(book.saveProfile(*profile).error);
    const double created = medianOfSaves(book, strangers(kSaves));
    const std::vector<std::shared_ptr<QVSocialProfile>> some(there.end() - std::min(kSaves, count), there.end());
    changeAll(some);
    std::cout << name << " with " << count << " cards: a new card " << created << " ms, an update "
              << medianOfSaves(book, some) << " ms (median)\n";
}

TEST(FiguresTest, Folder) {
    for (const int count : {1, 100, 1000}) {
        const testsupport::TemporaryFolder folder;
        QVVCardFolder cards(folder.path());
        tellFigures(cards, "Folder", count);
    }
}

TEST(FiguresTest, RadicaleServer) {
    const Radicale server;
    tellFigures(*server.addressBook(), "Radicale", 100);
}

TEST(FiguresTest, XandikosServer) {
    const Xandikos server;
    tellFigures(*server.addressBook(), "Xandikos", 100);
}

}  // namespace
