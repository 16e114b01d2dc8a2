#include "QVCardScan/QVCardScanTypes.h"
#include "QVCardScan/QVVeltoContactField.h"

#include <gtest/gtest.h>

namespace {

std::shared_ptr<QVVeltoContactField> field(QVString label, QVString text) {
    return QVVeltoContactField::initWithLabel(std::move(label), std::move(text));
}

TEST(QVVeltoContactField, KeepsItsLabelAndText) {
    const auto made = field("Email", "a@example.com");
    EXPECT_EQ(made->label(), "Email");
    EXPECT_EQ(made->text(), "a@example.com");
    made->setLabel(std::nullopt);
    made->setText("");
    EXPECT_EQ(made->label(), std::nullopt);
    EXPECT_EQ(made->text(), "");
}

TEST(QVVeltoContactField, StartsAbsent) {
    const QVVeltoContactField made;
    EXPECT_EQ(made.label(), std::nullopt);
    EXPECT_EQ(made.text(), std::nullopt);
    EXPECT_EQ(made.hash(), 0u);
}

struct Pair {
    const char* name;
    QVString label1, text1, label2, text2;
    bool equal;
};

class EqualityTest : public testing::TestWithParam<Pair> {};

TEST_P(EqualityTest, ComparesBothStringsExactly) {
    const Pair& pair = GetParam();
    const auto first = field(pair.label1, pair.text1);
    const auto second = field(pair.label2, pair.text2);
    EXPECT_EQ(first->isEqual(second), pair.equal);
    EXPECT_EQ(second->isEqual(first), pair.equal);
    if (pair.equal) {
        EXPECT_EQ(first->hash(), second->hash());
    }
}

const Pair kPairs[] = {
    {"Same", "Email", "a@example.com", "Email", "a@example.com", true},
    {"OtherText", "Email", "a@example.com", "Email", "b@example.com", false},
    {"OtherLabel", "Email", "a@example.com", "Work", "a@example.com", false},
    {"OtherCase", "Email", "a@example.com", "EMAIL", "a@example.com", false},
    {"Swapped", "a", "b", "b", "a", false},
    {"BothLabelsAbsent", std::nullopt, "a", std::nullopt, "a", true},
    {"BothTextsAbsent", "a", std::nullopt, "a", std::nullopt, true},
    {"AllAbsent", std::nullopt, std::nullopt, std::nullopt, std::nullopt, true},
    {"AbsentIsNotEmptyLabel", std::nullopt, "a", "", "a", false},
    {"AbsentIsNotEmptyText", "a", std::nullopt, "a", "", false},
    {"ComposedIsNotDecomposed", "a", "\u00e9", "a", "e\u0301", false},
};

INSTANTIATE_TEST_SUITE_P(Pairs, EqualityTest, testing::ValuesIn(kPairs),
                         [](const auto& row) { return std::string(row.param.name); });

class SpecialField : public QVVeltoContactField {};
class Stranger : public qv::Object {};

TEST(QVVeltoContactField, EqualsItselfAndItsOwnKindOnly) {
    const auto own = field("a", "b");
    EXPECT_TRUE(own->isEqual(own));
    EXPECT_FALSE(own->isEqual(nullptr));
    EXPECT_FALSE(own->isEqual(std::make_shared<Stranger>()));
    const auto special = std::make_shared<SpecialField>();
    special->setLabel("a");
    special->setText("b");
    EXPECT_TRUE(own->isEqual(special));
}

TEST(QVVeltoContactField, HashIsThatOfTheLabelXorThatOfTheText) {
    EXPECT_EQ(field("a", "b")->hash(), field("a", std::nullopt)->hash() ^ field(std::nullopt, "b")->hash());
    EXPECT_EQ(field("a", "a")->hash(), 0u);
}

TEST(QVVeltoContactField, EqualEntriesAreOneInASetThatKeepsTheOrder) {
    const qv::OrderedSet<std::shared_ptr<QVVeltoContactField>> set{field("b", "2"), field("a", "1"), field("b", "2")};
    ASSERT_EQ(set.size(), 2u);
    EXPECT_EQ((*set.begin())->label(), "b");
    EXPECT_TRUE(set.contains(field("a", "1")));
}

}  // namespace
