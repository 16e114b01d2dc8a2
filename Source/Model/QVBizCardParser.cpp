#include "QVCardScan/QVBizCardParser.h"

#include "QVBizCardBuilder.h"
#include "QVPlatform/Text.h"

#include <string_view>

namespace {

struct FieldType {
    std::string_view name;
    QVBusinessCardFieldType type;
};

constexpr FieldType kFieldTypes[] = {
    {CardRecoPropertyFieldTypeValueName, QVBusinessCardFieldTypeName},
    {CardRecoPropertyFieldTypeValueEmail, QVBusinessCardFieldTypeEmail},
    {CardRecoPropertyFieldTypeValuePhone, QVBusinessCardFieldTypePhone},
    {CardRecoPropertyFieldTypeValueURL, QVBusinessCardFieldTypeURL},
    {CardRecoPropertyFieldTypeValueAddress, QVBusinessCardFieldTypeAddress},
    {CardRecoPropertyFieldTypeValueTitle, QVBusinessCardFieldTypeTitle},
    {CardRecoPropertyFieldTypeValueWeb, QVBusinessCardFieldTypeURL},
    {CardRecoPropertyFieldTypeValueFax, QVBusinessCardFieldTypeFax},
    {CardRecoPropertyFieldTypeValueMobile, QVBusinessCardFieldTypeMobile},
    {CardRecoPropertyFieldTypeValueCompany, QVBusinessCardFieldTypeCompany},
    {CardRecoPropertyFieldTypeValueDepartment, QVBusinessCardFieldTypeDepartment},
    {CardRecoPropertyFieldTypeValueTwitter, QVBusinessCardFieldTypeTwitter},
    {CardRecoPropertyFieldTypeValueSkype, QVBusinessCardFieldTypeSkype},
};

// Single precision, widened.
double positionValue(const std::string& text) {
    return static_cast<double>(qv::Text::floatValue(text));
}

}  // namespace

std::shared_ptr<QVBusinessCard> QVBizCardParser::parse(const QVString& result, std::optional<qv::Error>* error) {
    QVBizCardBuilder builder(*this);
    if (result && !result->empty()) qv::XMLParser::parse(*result, builder);
    auto card = builder.takeCard();
    if (error && *error) *error = builder.error();
    return card;
}

std::int32_t QVBizCardParser::cardFieldTypeFromFieldName(const QVString& fieldName) const {
    if (!fieldName) return QVBusinessCardFieldTypeUnknown;
    const std::string name = qv::Text::lowercased(std::string_view(*fieldName));
    for (const FieldType& fieldType : kFieldTypes) {
        if (name == fieldType.name) return fieldType.type;
    }
    return QVBusinessCardFieldTypeUnknown;
}

std::shared_ptr<QVBusinessCardField> QVBizCardParser::cardFieldFromAttributeDictionary(
    const std::map<std::string, std::string>& attributes) const {
    QVString fieldType;
    qv::Rect frame;
    std::int64_t orient = 0;
    for (const auto& [name, value] : attributes) {
        if (name == CardRecoPropertyFieldType) fieldType = value;
        if (name == CardRecoPropertyPositionX) frame.origin.x = positionValue(value);
        if (name == CardRecoPropertyPositionY) frame.origin.y = positionValue(value);
        if (name == CardRecoPropertySizeWidth) frame.size.width = positionValue(value);
        if (name == CardRecoPropertySizeHeight) frame.size.height = positionValue(value);
        if (name == CardRecoPropertyOrientation) orient = qv::Text::integerValue(value);
    }
    const std::int32_t type = cardFieldTypeFromFieldName(fieldType);
    return QVBusinessCardField::initWithType(type, /*label=*/0, fieldType, /*text=*/std::nullopt, frame, /*weight=*/0,
                                             orient);
}
