#include "Output/Base64.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

qv::Data bytes(const std::string& text) {
    return {text.begin(), text.end()};
}

TEST(Base64, MatchesTheStandardsExamples) {
    const std::pair<const char*, const char*> rows[] = {{"", ""},
                                                        {"f", "Zg=="},
                                                        {"fo", "Zm8="},
                                                        {"foo", "Zm9v"},
                                                        {"foob", "Zm9vYg=="},
                                                        {"fooba", "Zm9vYmE="},
                                                        {"foobar", "Zm9vYmFy"},
                                                        {"\xFF\xFE\xFD", "//79"}};
    for (const auto& [plain, encoded] : rows)
        EXPECT_EQ(qvhost::base64(bytes(plain)), encoded);
}

}  // namespace
