#include "Support/Golden.h"
#include "Support/HostProgram.h"
#include "Support/TestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

std::vector<std::string> goldenCards() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(testsupport::testsFolder() / "Source/Golden"))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

class ParseGolden : public testing::TestWithParam<std::string> {};

TEST_P(ParseGolden, AnswerBecomesCard) {
    const std::filesystem::path folder = std::filesystem::path("Source/Golden") / GetParam();
    const auto result = testsupport::runHost({"parse", testsupport::testsFolder() / folder / "card.xml", "--json"});
    ASSERT_EQ(result.status, 0) << result.error;
    EXPECT_TRUE(testsupport::matchesGolden(result.output, folder / "card.json"));
}

INSTANTIATE_TEST_SUITE_P(Cards, ParseGolden, testing::ValuesIn(goldenCards()), [](const auto& card) {
    std::string name = card.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

}  // namespace
