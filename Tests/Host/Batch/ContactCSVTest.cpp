#include "Batch/ContactCSV.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using nlohmann::ordered_json;
using qvhost::CardRecord;
using qvhost::ContactCSV::cell;

TEST(ContactCSV, CellsAreQuotedWhereThatIsNeeded) {
    const struct {
        const char* name;
        const char* text;
        const char* cell;
    } rows[] = {
        {"empty", "", ""},
        {"plain", "Ada Example", "Ada Example"},
        {"blanks around", "  Ada ", "Ada"},
        {"comma", "Example, Ada", "\"Example, Ada\""},
        {"quote", "Ada \"A\" Example", "\"Ada \"\"A\"\" Example\""},
        {"only a quote", "\"", "\"\"\"\""},
        {"line break", "1 Main Street\n東京", "\"1 Main Street\n東京\""},
        {"carriage return", "a\rb", "\"a\rb\""},
        {"semicolon", "a; b", "a; b"},
        {"not ASCII", "Jürgen Größmann", "Jürgen Größmann"},
        {"formula", "=1+1", "'=1+1"},
        {"formula with a comma", "=SUM(A1,A2)", "\"'=SUM(A1,A2)\""},
        {"formula behind blanks", " \t=1+1", "'=1+1"},
        {"at", "@ada", "'@ada"},
        {"plus", "+cmd|' /C calc'!A0", "'+cmd|' /C calc'!A0"},
        {"minus", "-2+3+cmd", "'-2+3+cmd"},
        {"minus alone", "-", "'-"},
        {"full width", "＝1+1", "'＝1+1"},
        {"telephone", "+49 (0)30 123-45", "+49 (0)30 123-45"},
        {"telephones", "+1 555 0100 ext. 5; +1 555 0101", "+1 555 0100 ext. 5; +1 555 0101"},
        {"an equals sign further on", "a=b", "a=b"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(cell(row.text), row.cell) << row.name;
}

TEST(ContactCSV, TheFirstLineNamesTheColumns) {
    EXPECT_EQ(qvhost::ContactCSV::header(),
              "Name,Title,Department,Company,Email,Phone,Mobile,Fax,Website,Address,Twitter,Skype,LinkedIn,Facebook,"
              "Folder\r\n");
}

TEST(ContactCSV, RowsHoldWhatContactAndCardSay) {
    CardRecord record;
    record.name = "x";
    record.object = ordered_json::parse(R"({
        "contact": {"fullName": "Example, Ada", "jobTitle": null, "company": "Ex \"&\" Co", "URL": "example.com",
                    "emailFields": [{"label": "Email", "text": "a@b.example"}, {"label": null, "text": "c@d.example"}],
                    "orderedEmailFields": [{"label": "Email", "text": "a@b.example"}],
                    "phoneFields": [{"label": "Phone", "text": "+1 555 0100"}, {"label": "Mobile", "text": "1"},
                                    {"label": "FAX", "text": "2"}, {"label": "Cell", "text": "3"}],
                    "address": "1 Main Street\nTokyo", "twitterHandles": ["ada"]},
        "card": {"fields": [{"type": 6, "text": "Press"}, {"type": 12, "text": "ada.skype"}, {"type": 6, "text": null}]}
    })");
    EXPECT_EQ(qvhost::ContactCSV::row(record),
              "\"Example, Ada\",,Press,\"Ex \"\"&\"\" Co\",a@b.example; c@d.example,+1 555 0100,1; 3,2,example.com,"
              "\"1 Main Street\nTokyo\",ada,ada.skype,,,cards/x\r\n");
}

TEST(ContactCSV, BrokenRecordsGiveEmptyCells) {
    for (const char* text : {"null", "[]", "{}", R"({"contact": 7, "card": []})", R"({"contact": {"emailFields": 3}})",
                             R"({"contact": {"fullName": 1, "phoneFields": [1, null, {"text": 2}]}, "card": null})"}) {
        CardRecord record;
        record.name = "x";
        record.object = ordered_json::parse(text);
        EXPECT_EQ(qvhost::ContactCSV::row(record), ",,,,,,,,,,,,,,cards/x\r\n") << text;
    }
}

}  // namespace
