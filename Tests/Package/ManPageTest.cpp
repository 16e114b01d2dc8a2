#include "Package/ProgramHelp.h"
#include "Support/ReadFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace {

using namespace packaging;
using testing::IsEmpty;
using testing::IsSupersetOf;

std::string pathOf(const std::string& program) {
    return QV_SOURCE_DIR "/Packaging/man/" + program + (program == "qvcardrecod" ? ".8" : ".1");
}

std::string pageOf(const std::string& program) {
    std::string page = testsupport::readFile(pathOf(program));
    std::erase(page, '\\');
    return page;
}

std::set<std::string> optionsIn(const std::string& page) {
    static const std::regex option("(^|[ \"])(--?[A-Za-z][-A-Za-z0-9]*)");
    std::set<std::string> options;
    std::istringstream lines(page);
    for (std::string line; std::getline(lines, line);) {
        // Where options are explained, they stand in lines of bold type.
        if (!line.starts_with(".B")) continue;
        for (std::sregex_iterator found(line.begin(), line.end(), option), end; found != end; ++found)
            options.insert((*found)[2]);
    }
    return options;
}

class ManPageTest : public testing::TestWithParam<std::string> {};

TEST_P(ManPageTest, TellsOfEveryOptionAndNoOther) {
    std::set<std::string> offered;
    for (const auto& help : everyHelpOf(GetParam()))
        offered.insert(help.options.begin(), help.options.end());
    ASSERT_GE(offered.size(), 10U);
    EXPECT_EQ(optionsIn(pageOf(GetParam())), offered);
}

TEST_P(ManPageTest, TellsOfEveryCommand) {
    const std::string page = pageOf(GetParam());
    for (const auto& help : everyHelpOf(GetParam())) {
        std::string name;
        for (const auto& word : help.command)
            name += (name.empty() ? "" : " ") + word;
        if (help.commands.empty() && !name.empty()) {
            EXPECT_NE(page.find("\n.B " + name + "\n"), std::string::npos) << name;
        }
    }
}

TEST_P(ManPageTest, IsSoundTroff) {
    testsupport::ProcessCall lint;
    lint.program = "/usr/bin/mandoc";
    lint.arguments = {"-T", "lint", "-W", "warning", pathOf(GetParam())};
    EXPECT_THAT(testsupport::runProcess(lint).output, IsEmpty());
    testsupport::ProcessCall groff;
    groff.program = "/usr/bin/groff";
    groff.arguments = {"-man", "-ww", "-Tutf8", "-z", pathOf(GetParam())};
    const auto result = testsupport::runProcess(groff);
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Programs, ManPageTest, testing::ValuesIn(kPrograms),
                         [](const auto& row) { return row.param; });

}  // namespace
