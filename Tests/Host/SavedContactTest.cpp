// From a two-sided card to the address book and back out of it through another program: khard, which shares folders of
// vCards with this one.
#include "Support/HostProgram.h"
#include "Support/ReadFile.h"
#include "Support/RunProcess.h"
#include "Support/TemporaryFolder.h"
#include "Support/TestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testsupport::ProcessCall;
using testsupport::ProcessResult;
using testsupport::runProcess;

class SavedContact : public testing::Test {
  protected:
    SavedContact() { mFolder.write("khard.conf", "[addressbooks]\n[[scans]]\npath = " + book() + "\n"); }
    std::string book() const { return (mFolder / "contacts").string(); }

    ProcessResult scan() const {
        const fs::path samples = fs::path(QV_SOURCE_DIR) / "Samples";
        return testsupport::runHost({"scan", (samples / "two-sided-front.jpg").string(),
                                     (samples / "two-sided-back.jpg").string(), "--search", "--save", "--address-book",
                                     book()});
    }
    ProcessResult khard(std::vector<std::string> arguments) const {
        ProcessCall call;
        call.program = "/usr/bin/khard";
        call.arguments = {"-c", (mFolder / "khard.conf").string()};
        call.arguments.insert(call.arguments.end(), arguments.begin(), arguments.end());
        call.environment = {{"LC_ALL", "C.UTF-8"}, {"HOME", mFolder.path().string()}};
        return runProcess(call);
    }

    testsupport::TemporaryFolder mFolder;
};

TEST_F(SavedContact, IsOneAfterTwoScansAndKhardShowsIt) {
    const ProcessResult first = scan();
    ASSERT_EQ(first.status, 0) << first.error;
    EXPECT_THAT(first.output, HasSubstr("Contact: created in " + book()));
    const ProcessResult second = scan();
    ASSERT_EQ(second.status, 0) << second.error;
    EXPECT_THAT(second.output, HasSubstr("Search: found \"Edmund Hallworth\" in the address book"));
    EXPECT_THAT(second.output, HasSubstr("Contact: updated \"Edmund Hallworth\" (the same e-mail address) in "));
    EXPECT_EQ(std::distance(fs::directory_iterator(book()), fs::directory_iterator()), 1);

    const ProcessResult list = khard({"list", "--parsable"});
    ASSERT_EQ(list.status, 0) << list.error;
    EXPECT_EQ(std::count(list.output.begin(), list.output.end(), '\n'), 1) << list.output;
    const ProcessResult shown = khard({"show", "Hallworth"});
    ASSERT_EQ(shown.status, 0) << shown.error;
    for (const char* text :
         {"Edmund Hallworth", "Tarn & Vale Instruments Ltd", "Head of Engineering", "edmund.hallworth@tarnvale.example",
          "+44 20 7946 0318", "+44 7700 900462", "+44 20 7946 0319", "27 Old Foundry Road"})
        EXPECT_THAT(shown.output, HasSubstr(text));
}

}  // namespace
