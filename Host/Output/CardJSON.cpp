#include "Output/CardJSON.h"

#include "QVCardScan/QVBusinessCardField.h"

#include <nlohmann/json.hpp>

namespace qvhost {
namespace {

JSON::Value fieldJSON(const QVBusinessCardField& field) {
    const qv::Rect& frame = field.frame();
    return {
        {"type", field.type()},
        {"label", field.label()},
        {"name", JSON::from(field.name())},
        {"text", JSON::from(field.text())},
        {"frame", JSON::Value::array({frame.origin.x, frame.origin.y, frame.size.width, frame.size.height})},
        {"weight", field.weight()},
        {"orient", field.orient()},
    };
}

JSON::Value fieldsJSON(const QVFieldArray& fields) {
    if (!fields) return nullptr;
    JSON::Value list = JSON::Value::array();
    for (const auto& field : *fields)
        list.push_back(fieldJSON(*field));
    return list;
}

}  // namespace

JSON::Value cardJSON(const std::shared_ptr<QVBusinessCard>& card) {
    if (!card) return nullptr;
    return {
        {"language", JSON::from(card->language())},
        {"cardWidth", card->cardWidth()},
        {"cardHeight", card->cardHeight()},
        {"fields", fieldsJSON(card->fields())},
        {"fullName", JSON::from(card->fullName())},
        {"emails", JSON::from(card->emails())},
        {"phoneNumbers", JSON::from(card->phoneNumbers())},
        {"hasTitleField", card->hasTitleField()},
        {"score", card->score()},
        {"rotationByDegrees", card->rotationByDegrees()},
        {"description", card->description()},
    };
}

}  // namespace qvhost
