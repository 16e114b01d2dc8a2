#include "Support/RunProcess.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testsupport::ProcessResult;

constexpr const char* kPresets = R"({
  "version": 3,
  "configurePresets": [
    {"name": "tiny", "generator": "Ninja", "binaryDir": "${sourceDir}/build/tiny"}
  ]
})";

// It looks for new files before every build, as this project does.
constexpr const char* kProject = R"(
cmake_minimum_required(VERSION 3.25)
project(Tiny NONE)
file(GLOB texts CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/*.txt")
add_custom_command(OUTPUT made COMMAND ${CMAKE_COMMAND} -E copy "${CMAKE_SOURCE_DIR}/source.txt" made
                   DEPENDS "${CMAKE_SOURCE_DIR}/source.txt")
add_custom_target(all-of-it ALL DEPENDS made)
)";

/// A project of one step that is built by the script that builds this one.
class BuildPreset : public testing::Test {
  protected:
    BuildPreset() {
        mFolder.write("CMakePresets.json", kPresets);
        mFolder.write("CMakeLists.txt", kProject);
        mFolder.write("source.txt", "one");
        std::filesystem::create_directory(mFolder / "Packaging");
        std::filesystem::copy_file(std::filesystem::path(QV_SOURCE_DIR) / "Packaging/build-preset",
                                   mFolder / "Packaging/build-preset");
    }

    ProcessResult build(bool onTerminal) const {
        testsupport::ProcessCall call;
        call.program = mFolder / "Packaging/build-preset";
        call.arguments = {"tiny"};
        call.errorIsTerminal = onTerminal;
        return testsupport::runProcess(call);
    }

    testsupport::TemporaryFolder mFolder;
};

TEST_F(BuildPreset, SaysWhatItDoesAndNothingWhenNothingIsToDo) {
    const auto first = build(/*onTerminal=*/true);
    ASSERT_EQ(first.status, 0) << first.error;
    EXPECT_THAT(first.error, HasSubstr("Configuring the build (tiny)"));
    EXPECT_THAT(first.error, HasSubstr("\r[1/1] \r\x1b[K"));
    for (const bool onTerminal : {true, false}) {
        const auto again = build(onTerminal);
        EXPECT_EQ(again.status, 0);
        EXPECT_THAT(again.output, IsEmpty());
        EXPECT_THAT(again.error, IsEmpty()) << "on a terminal: " << onTerminal;
    }
}

TEST_F(BuildPreset, ShowsStepsOnlyToATerminal) {
    ASSERT_EQ(build(/*onTerminal=*/false).status, 0);
    mFolder.write("source.txt", "another");
    EXPECT_THAT(build(/*onTerminal=*/false).error, IsEmpty());
    mFolder.write("source.txt", "a third");
    EXPECT_THAT(build(/*onTerminal=*/true).error, HasSubstr("[1/"));
}

TEST_F(BuildPreset, AFailureShowsTheWordsOfTheBuilder) {
    ASSERT_EQ(build(/*onTerminal=*/false).status, 0);
    std::filesystem::remove(mFolder / "source.txt");
    const auto failed = build(/*onTerminal=*/false);
    EXPECT_NE(failed.status, 0);
    EXPECT_THAT(failed.error, HasSubstr("source.txt"));
    EXPECT_THAT(failed.error, HasSubstr("The build failed; the whole log is "));
}

}  // namespace
