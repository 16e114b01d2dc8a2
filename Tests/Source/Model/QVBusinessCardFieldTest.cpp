#include "QVCardScan/QVBusinessCardField.h"
#include "QVPlatform/RangeError.h"
#include "Support/CapturedLog.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

std::shared_ptr<QVBusinessCardField> fieldOfType(std::int32_t type) {
    auto field = std::make_shared<QVBusinessCardField>();
    field->setType(type);
    return field;
}

TEST(BusinessCardField, IsEmptyAtFirst) {
    const QVBusinessCardField field;
    EXPECT_EQ(field.type(), 0);
    EXPECT_EQ(field.label(), 0);
    EXPECT_EQ(field.name(), std::nullopt);
    EXPECT_EQ(field.text(), std::nullopt);
    EXPECT_EQ(field.frame(), qv::Rect());
    EXPECT_EQ(field.weight(), 0);
    EXPECT_EQ(field.orient(), 0);
}

TEST(BusinessCardField, StoresTheSevenValuesUnrepaired) {
    const qv::Rect frame{{1.5, 2.5}, {30, 40}};
    const auto field = QVBusinessCardField::initWithType(2, 3, "Email", "J@ZQCOM", frame, 87, 90);
    EXPECT_EQ(field->type(), 2);
    EXPECT_EQ(field->label(), 3);
    EXPECT_EQ(field->name(), "Email");
    EXPECT_EQ(field->text(), "J@ZQCOM");
    EXPECT_EQ(field->frame(), frame);
    EXPECT_EQ(field->weight(), 87);
    EXPECT_EQ(field->orient(), 90);
}

TEST(BusinessCardField, HasPlainSetters) {
    QVBusinessCardField field;
    field.setType(QVBusinessCardFieldTypeFax);
    field.setLabel(-1);
    field.setName("fax");
    field.setFrame({{1, 2}, {3, 4}});
    field.setWeight(std::int64_t{1} << 40);
    field.setOrient(-90);
    EXPECT_EQ(field.type(), 9);
    EXPECT_EQ(field.label(), -1);
    EXPECT_EQ(field.name(), "fax");
    EXPECT_EQ(field.frame(), (qv::Rect{{1, 2}, {3, 4}}));
    EXPECT_EQ(field.weight(), std::int64_t{1} << 40);
    EXPECT_EQ(field.orient(), -90);
    field.setName(std::nullopt);
    EXPECT_EQ(field.name(), std::nullopt);
}

TEST(BusinessCardField, HasTheKnownTypeCodes) {
    EXPECT_EQ(QVBusinessCardFieldTypeUnknown, 0);
    EXPECT_EQ(QVBusinessCardFieldTypeName, 1);
    EXPECT_EQ(QVBusinessCardFieldTypeEmail, 2);
    EXPECT_EQ(QVBusinessCardFieldTypePhone, 3);
    EXPECT_EQ(QVBusinessCardFieldTypeTitle, 4);
    EXPECT_EQ(QVBusinessCardFieldTypeCompany, 5);
    EXPECT_EQ(QVBusinessCardFieldTypeDepartment, 6);
    EXPECT_EQ(QVBusinessCardFieldTypeURL, 7);
    EXPECT_EQ(QVBusinessCardFieldTypeAddress, 8);
    EXPECT_EQ(QVBusinessCardFieldTypeFax, 9);
    EXPECT_EQ(QVBusinessCardFieldTypeMobile, 10);
    EXPECT_EQ(QVBusinessCardFieldTypeTwitter, 11);
    EXPECT_EQ(QVBusinessCardFieldTypeSkype, 12);
}

TEST(BusinessCardField, NormalisesNamesAndEmailsOnly) {
    for (std::int32_t type = -1; type <= 13; ++type) {
        const auto field = fieldOfType(type);
        field->setText(" DR. J@ZQCOM ");
        EXPECT_EQ(field->canPerformNormalizationAndAutocorrection(), type == 1 || type == 2) << type;
        EXPECT_EQ(field->text(), type == 1 ? "Dr. Jzqcom" : type == 2 ? "dr.j@zq.com" : " DR. J@ZQCOM ") << type;
    }
}

TEST(BusinessCardField, ReplacesThePreviousText) {
    const auto field = fieldOfType(QVBusinessCardFieldTypeName);
    field->setText("JOHN");
    field->setText("JOHN SMITH");
    EXPECT_EQ(field->text(), "John Smith");
    field->setText("...");
    EXPECT_EQ(field->text(), "") << "nothing was left of it";
    field->setText(std::nullopt);
    EXPECT_EQ(field->text(), std::nullopt);
}

TEST(BusinessCardField, PassesOnAbsentAndEmptyTexts) {
    for (const std::int32_t type : {0, 1, 2, 3}) {
        const auto field = fieldOfType(type);
        EXPECT_EQ(field->performNormalizationAndAutocorrectionForText(std::nullopt, type), std::nullopt);
        EXPECT_EQ(field->performNormalizationAndAutocorrectionForText("", type), "");
        field->setText("");
        EXPECT_EQ(field->text(), "");
    }
}

TEST(BusinessCardField, PicksTheRepairByTheTypeItIsGiven) {
    const auto field = fieldOfType(QVBusinessCardFieldTypePhone);
    EXPECT_EQ(field->performNormalizationAndAutocorrectionForText("JO@ZQCOM", 2), "jo@zq.com");
    EXPECT_EQ(field->performNormalizationAndAutocorrectionForText("JO SMITH", 1), "Jo Smith");
    for (const std::int32_t type : {-1, 0, 3, 4, 12, 13}) {
        EXPECT_EQ(field->performNormalizationAndAutocorrectionForText("JO", type), std::nullopt) << type;
    }
}

TEST(BusinessCardField, DescribesItsFirstFourValues) {
    const auto field = QVBusinessCardField::initWithType(2, 0, "email", "a@b.com", {}, 9, 90);
    EXPECT_EQ(field->description(), "Business Card Field: 2 0 email a@b.com");
    EXPECT_EQ(QVBusinessCardField().description(), "Business Card Field: 0 0 (null) (null)");
    field->setName("%@ %d");
    field->setLabel(-7);
    EXPECT_EQ(field->description(), "Business Card Field: 2 -7 %@ %d a@b.com") << "values are not looked into";
}

// Repair rules of a host's own.
class Picky : public QVBusinessCardField {
  public:
    QVString performNormalizationAndAutocorrectionForText(const QVString& text, std::int32_t) const override {
        ++calls;
        if (text == "range") throw qv::RangeError("index 7 past the end");
        if (text == "other") throw std::out_of_range("not ours");
        if (text == "absent") return std::nullopt;
        return text;
    }

    mutable int calls = 0;
};

TEST(BusinessCardField, KeepsTheRawTextWhenTheRepairLeavesTheRange) {
    testsupport::CapturedLog log;
    Picky field;
    field.setType(QVBusinessCardFieldTypeName);
    field.setText("before");
    field.setText("range");
    EXPECT_EQ(field.text(), "range");
    EXPECT_EQ(log.count("Exception when performing name / email normalization: index 7 past the end"), 1U);
    EXPECT_EQ(log.messages().size(), 1U);
}

TEST(BusinessCardField, LetsOtherFailuresPass) {
    testsupport::CapturedLog log;
    Picky field;
    field.setType(QVBusinessCardFieldTypeEmail);
    field.setText("before");
    EXPECT_THROW(field.setText("other"), std::out_of_range);
    EXPECT_EQ(field.text(), "before");
    EXPECT_TRUE(log.messages().empty());
}

TEST(BusinessCardField, StoresAnAbsentRepair) {
    Picky field;
    field.setType(QVBusinessCardFieldTypeEmail);
    field.setText("before");
    field.setText("absent");
    EXPECT_EQ(field.text(), std::nullopt);
}

TEST(BusinessCardField, DoesNotAskForARepairOfOtherTypes) {
    Picky field;
    field.setType(QVBusinessCardFieldTypeTitle);
    field.setText("range");
    EXPECT_EQ(field.text(), "range");
    EXPECT_EQ(field.calls, 0);
}

}  // namespace
