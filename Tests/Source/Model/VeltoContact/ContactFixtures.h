#pragma once

#include "QVCardScan/QVBusinessCard.h"
#include "QVCardScan/QVVeltoContact.h"
#include "QVPlatform/Bundle.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Short ways to make contacts and cards for tests.
namespace fixtures {

using Entry = std::pair<QVString, QVString>;

inline QVContactFieldSet entrySet(std::initializer_list<Entry> entries) {
    auto set = std::make_shared<qv::OrderedSet<std::shared_ptr<QVVeltoContactField>>>();
    for (const Entry& entry : entries)
        set->insert(QVVeltoContactField::initWithLabel(entry.first, entry.second));
    return set;
}

inline QVContactFieldArray entryArray(std::initializer_list<Entry> entries) {
    auto array = std::make_shared<std::vector<std::shared_ptr<QVVeltoContactField>>>();
    for (const Entry& entry : entries)
        array->push_back(QVVeltoContactField::initWithLabel(entry.first, entry.second));
    return array;
}

inline QVHandleSet handleSet(std::initializer_list<std::string> handles) {
    return std::make_shared<qv::OrderedSet<std::string>>(handles);
}

inline QVStringArray strings(std::initializer_list<std::string> texts) {
    return std::make_shared<std::vector<std::string>>(texts);
}

/// What a set holds, in its order.
inline std::vector<Entry> entriesOf(const QVContactFieldSet& set) {
    std::vector<Entry> entries;
    for (const auto& field : *set)
        entries.emplace_back(field->label(), field->text());
    return entries;
}

inline std::shared_ptr<QVBusinessCardField> cardField(std::int32_t type, QVString name, QVString text,
                                                      std::int64_t weight = 50) {
    return QVBusinessCardField::initWithType(type, 0, std::move(name), std::move(text), {}, weight, 0);
}

inline std::shared_ptr<QVBusinessCard> card(std::initializer_list<std::shared_ptr<QVBusinessCardField>> fields) {
    auto array = std::make_shared<std::vector<std::shared_ptr<QVBusinessCardField>>>(fields);
    return QVBusinessCard::initWithLanguage("en", array, nullptr, nullptr);
}

/// The host's words are the English keys while this lives, whatever the environment says.
class UntranslatedWords : public testing::Test {
  protected:
    UntranslatedWords() {
        qv::Bundle::setLocalizer([](std::string_view) { return std::nullopt; });
    }
    ~UntranslatedWords() override { qv::Bundle::setLocalizer({}); }
};

}  // namespace fixtures
