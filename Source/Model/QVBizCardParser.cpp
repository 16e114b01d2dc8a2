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
    const std::string_view document = result ? std::string_view(*result) : std::string_view();
    QVBizCardBuilder builder(*this, document);
    if (!document.empty()) qv::XMLParser::parse(document, builder);
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
    auto field = std::make_shared<QVBusinessCardField>();
    readCardField(*field, attributes);
    return field;
}

void QVBizCardParser::readCardField(QVBusinessCardField& field,
                                    const std::map<std::string, std::string>& attributes) const {
    qv::Rect frame;
    for (const auto& [name, value] : attributes) {
        if (name == CardRecoPropertyFieldType) field.setName(value);
        if (name == CardRecoPropertyPositionX) frame.origin.x = positionValue(value);
        if (name == CardRecoPropertyPositionY) frame.origin.y = positionValue(value);
        if (name == CardRecoPropertySizeWidth) frame.size.width = positionValue(value);
        if (name == CardRecoPropertySizeHeight) frame.size.height = positionValue(value);
        if (name == CardRecoPropertyOrientation) field.setOrient(qv::Text::integerValue(value));
    }
    field.setFrame(frame);
    field.setType(cardFieldTypeFromFieldName(field.name()));
}
