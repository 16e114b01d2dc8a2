#include "Support/NearMiss.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using qvhost::nearMiss;

const std::vector<std::string> kCommands = {"scan", "parse", "note"};
const std::vector<std::string> kOptions = {"--json", "--output", "--skip-note", "--server", "--token-file"};

TEST(NearMiss, FindsWhatWasMeant) {
    const struct {
        const char* row;
        const char* typed;
        const char* meant;
    } rows[] = {
        {"letters exchanged", "scna", "scan"},
        {"letter missing", "prse", "parse"},
        {"letter too many", "notee", "note"},
        {"letter wrong", "scam", "scan"},
        {"capitals", "SCAN", "scan"},
        {"hyphens in front", "--parse", "parse"},
        {"the beginning of a name", "pa", "parse"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(nearMiss(row.typed, kCommands), row.meant) << row.row;
    EXPECT_EQ(nearMiss("--jsn", kOptions), "--json");
    EXPECT_EQ(nearMiss("-json", kOptions), "--json");
    EXPECT_EQ(nearMiss("--skipnote", kOptions), "--skip-note");
    EXPECT_EQ(nearMiss("--skip_note", kOptions), "--skip-note");
    EXPECT_EQ(nearMiss("--token", kOptions), "--token-file");
    EXPECT_EQ(nearMiss("--ouput", kOptions), "--output");
}

TEST(NearMiss, GuessesNothingWild) {
    for (const char* typed : {"", "-", "s", "xyzzy", "frobnicate", "card.jpg", "東京"})
        EXPECT_EQ(nearMiss(typed, kCommands), std::nullopt) << typed;
    EXPECT_EQ(nearMiss("scan", {}), std::nullopt);
    EXPECT_EQ(nearMiss(std::string(1'000'000, 's'), kCommands), std::nullopt);
}

}  // namespace
