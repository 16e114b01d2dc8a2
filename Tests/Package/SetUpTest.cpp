#include "Support/ReadFile.h"
#include "Support/RunProcess.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr const char* kStep = R"(#!/usr/bin/env bash
cd "$(dirname "$0")/.."
echo "${0##*/} $*" >>calls
flock -n build/.lock true && exit 99
)";

/// The script, with two others beside it that only write down how they were called and whether it is their turn.
class SetUp : public testing::Test {
  protected:
    SetUp() {
        std::filesystem::create_directory(mFolder / "Packaging");
        std::filesystem::copy_file(std::filesystem::path(QV_SOURCE_DIR) / "Packaging/set-up",
                                   mFolder / "Packaging/set-up");
        letStepEndWith("install-packages", 0);
        letStepEndWith("build-preset", 0);
    }

    void letStepEndWith(const std::string& step, int status) const {
        const std::filesystem::path file =
            mFolder.write("Packaging/" + step, kStep + ("exit " + std::to_string(status)) + "\n");
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    }

    int setUp(std::vector<std::string> arguments) const {
        testsupport::ProcessCall call;
        call.program = mFolder / "Packaging/set-up";
        call.arguments = std::move(arguments);
        return testsupport::runProcess(call).status;
    }

    std::filesystem::path calls() const { return mFolder / "calls"; }

    testsupport::TemporaryFolder mFolder;
};

TEST_F(SetUp, InstallsAndThenBuilds) {
    EXPECT_EQ(setUp({"run", "build", "--", "release", "one", "two"}), 0);
    EXPECT_EQ(testsupport::readFile(calls()), "install-packages run build\nbuild-preset release one two\n");
}

TEST_F(SetUp, BuildsAllOfAPresetWithoutATarget) {
    EXPECT_EQ(setUp({"build", "--", "packages"}), 0);
    EXPECT_EQ(testsupport::readFile(calls()), "install-packages build\nbuild-preset packages\n");
}

TEST_F(SetUp, BuildsNothingWithoutAPreset) {
    EXPECT_EQ(setUp({"run", "build", "test"}), 0);
    EXPECT_EQ(testsupport::readFile(calls()), "install-packages run build test\n");
}

TEST_F(SetUp, EndsAsWhatFailedEnded) {
    letStepEndWith("build-preset", 3);
    EXPECT_EQ(setUp({"run", "--", "run"}), 3);
    letStepEndWith("install-packages", 100);
    std::filesystem::remove(calls());
    EXPECT_EQ(setUp({"run", "--", "run"}), 100);
    EXPECT_EQ(testsupport::readFile(calls()), "install-packages run\n") << "nothing is built without them";
}

}  // namespace
