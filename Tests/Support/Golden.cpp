#include "Support/Golden.h"

#include "Support/TestSupport.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>
#include <string_view>

namespace testsupport {
namespace {

bool goldensAreRewritten() {
    const char* wish = std::getenv("QV_UPDATE_GOLDENS");
    return wish != nullptr && std::string_view(wish) == "1";
}

std::optional<std::string> contentsOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

testing::AssertionResult rewrite(const std::string& text, const std::filesystem::path& file) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream << text;
    stream.close();
    if (!stream) return testing::AssertionFailure() << "The golden file " << file << " could not be written.";
    return testing::AssertionSuccess() << "rewrote " << file;
}

/// The line in which two texts first differ, counted from 1, and what each has there.
std::string firstDifference(const std::string& actual, const std::string& expected) {
    const auto place = std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end()).first;
    const auto offset = static_cast<std::size_t>(place - actual.begin());
    const auto line = std::count(actual.begin(), place, '\n') + 1;
    const std::size_t start = offset < 40 ? 0 : offset - 40;
    return "line " + std::to_string(line) + "\n  expected …" + expected.substr(start, 120) + "…\n  actual   …" +
           actual.substr(start, 120) + "…";
}

}  // namespace

testing::AssertionResult matchesGolden(const std::string& text, const std::filesystem::path& file) {
    const std::filesystem::path path = testsFolder() / file;
    if (goldensAreRewritten()) return rewrite(text, path);
    const auto expected = contentsOf(path);
    if (!expected) {
        return testing::AssertionFailure()
               << "There is no golden file " << path << ". Run this test once with QV_UPDATE_GOLDENS=1 to write it.";
    }
    if (text == *expected) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "Differs from " << path << " in " << firstDifference(text, *expected);
}

}  // namespace testsupport
