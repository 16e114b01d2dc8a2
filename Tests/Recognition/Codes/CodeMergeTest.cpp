#include "Codes/CodeMerge.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace qv::recognition {
namespace {

using enum FieldType;

const Box kPrinted{10, 20, 300, 40};
const Box kCode{700, 400, 200, 200};

Field printed(FieldType type, const std::string& text) {
    return {type, text, kPrinted, 80, 0.9F};
}

const Field* find(const std::vector<Field>& fields, FieldType type, const std::string& text) {
    const auto found = std::find_if(fields.begin(), fields.end(),
                                    [&](const auto& field) { return field.type == type && field.text == text; });
    return found == fields.end() ? nullptr : &*found;
}

TEST(CodeMergeTest, WinsOverWhatWasReadAndTakesItsPlace) {
    const auto fields = withCode({printed(Name, "Imogen Whltcornbe"), printed(Email, "inogen@acme.example")},
                                 {{Name, "Imogen Whitcombe"}, {Email, "imogen@acme.example"}}, kCode);
    ASSERT_EQ(fields.size(), 2U);
    for (const auto* field : {find(fields, Name, "Imogen Whitcombe"), find(fields, Email, "imogen@acme.example")}) {
        ASSERT_NE(field, nullptr);
        EXPECT_TRUE(field->isSure);
        EXPECT_EQ(field->box, kPrinted);
    }
}

TEST(CodeMergeTest, AddsWhatWasNotReadInTheCodesOwnPlace) {
    const auto fields = withCode({}, {{Title, "Buyer"}}, kCode);
    ASSERT_EQ(fields.size(), 1U);
    EXPECT_EQ(fields[0].box, kCode);
    EXPECT_TRUE(fields[0].isSure);
}

TEST(CodeMergeTest, LeavesOneName) {
    const auto fields = withCode({printed(Name, "Acme Tools"), printed(Company, "Jane Doe")},
                                 {{Name, "Jane Doe"}, {Company, "Acme Tools"}}, kCode);
    EXPECT_EQ(fields.size(), 2U);
    EXPECT_NE(find(fields, Name, "Jane Doe"), nullptr);
    EXPECT_NE(find(fields, Company, "Acme Tools"), nullptr);
}

TEST(CodeMergeTest, KeepsWhatOnlyThePrintHas) {
    const auto fields =
        withCode({printed(Fax, "030 23125001"), printed(Email, "info@acme.example"), printed(Title, "Buyer")},
                 {{Phone, "030 23125000", true}, {Email, "jane@acme.example"}}, kCode);
    EXPECT_EQ(fields.size(), 5U);
    const auto* fax = find(fields, Fax, "030 23125001");
    ASSERT_NE(fax, nullptr);
    EXPECT_FALSE(fax->isSure);
}

TEST(CodeMergeTest, KnowsANumberInItsTwoSpellings) {
    const auto fields = withCode({printed(Mobile, "0171 39200 46")}, {{Phone, "+491713920046", true}}, kCode);
    ASSERT_EQ(fields.size(), 1U);
    EXPECT_EQ(fields[0].type, Mobile) << "the code does not say, the print does";
    EXPECT_EQ(fields[0].text, "+491713920046");
    const auto said = withCode({printed(Phone, "0171 39200 46")}, {{Fax, "+491713920046"}}, kCode);
    EXPECT_EQ(said[0].type, Fax);
}

TEST(CodeMergeTest, AsksTheNumberingPlanWhereNothingElseSays) {
    EXPECT_EQ(withCode({}, {{Phone, "+491713920046", true}}, kCode)[0].type, Mobile);
    EXPECT_EQ(withCode({}, {{Phone, "+493023125000", true}}, kCode)[0].type, Phone);
}

TEST(CodeMergeTest, KeepsALinkAsPrintedWhenOnlyTheSchemeDiffers) {
    const auto fields = withCode({printed(URL, "www.acme.example")}, {{URL, "http://www.acme.example/"}}, kCode);
    ASSERT_EQ(fields.size(), 1U);
    EXPECT_EQ(fields[0].text, "www.acme.example");
}

TEST(CodeMergeTest, ChangesNothingWithoutACode) {
    EXPECT_EQ(withCode({printed(Name, "Jane Doe")}, {}, kCode)[0].text, "Jane Doe");
}

}  // namespace
}  // namespace qv::recognition
