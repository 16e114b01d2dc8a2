#include "QVCardScan/QVBusinessCard.h"

#include "QVPlatform/Format.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <unordered_set>

namespace {

using FieldList = std::vector<std::shared_ptr<QVBusinessCardField>>;

const FieldList& listOf(const QVFieldArray& fields) {
    static const FieldList none;
    return fields ? *fields : none;
}

bool hasType(const std::shared_ptr<QVBusinessCardField>& field, std::int32_t type) {
    return field && field->type() == type;
}

QVStringArray textsOfType(const QVFieldArray& fields, std::int32_t type) {
    auto texts = std::make_shared<std::vector<std::string>>();
    for (const auto& field : listOf(fields)) {
        if (hasType(field, type) && field->text()) texts->push_back(*field->text());
    }
    return texts->empty() ? nullptr : texts;
}

// What a list of fields holds, by type and exact text: two long cards are merged without comparing each with each.
class FieldIndex {
  public:
    explicit FieldIndex(const FieldList& fields) {
        for (const auto& field : fields) {
            if (field && field->text()) mTexts[field->type()].insert(*field->text());
        }
    }

    bool contains(const QVBusinessCardField& field) const {
        const auto texts = mTexts.find(field.type());
        return field.text() && texts != mTexts.end() && texts->second.contains(*field.text());
    }

  private:
    std::map<std::int32_t, std::unordered_set<std::string_view>> mTexts;
};

}  // namespace

std::shared_ptr<QVBusinessCard> QVBusinessCard::initWithLanguage(QVString language, QVFieldArray fields,
                                                                 std::shared_ptr<qv::Image> frontImage,
                                                                 std::shared_ptr<qv::Image> backImage) {
    auto card = std::make_shared<QVBusinessCard>();
    card->mLanguage = std::move(language);
    card->mFields = std::move(fields);
    card->mFrontImage = std::move(frontImage);
    card->mBackImage = std::move(backImage);
    return card;
}

std::int64_t QVBusinessCard::rotationByDegrees() const {
    const FieldList& fields = listOf(mFields);
    const auto last = std::find_if(fields.rbegin(), fields.rend(), [](const auto& field) { return field != nullptr; });
    return last == fields.rend() ? 0 : (*last)->orient();
}

std::int64_t QVBusinessCard::score() const {
    const QVString name = fullName();
    return (name && !name->empty() ? 1 : 0) + (hasTitleField() ? 1 : 0);
}

bool QVBusinessCard::hasTitleField() const {
    const FieldList& fields = listOf(mFields);
    return std::any_of(fields.begin(), fields.end(),
                       [](const auto& field) { return hasType(field, QVBusinessCardFieldTypeTitle); });
}

QVString QVBusinessCard::fullName() const {
    const QVBusinessCardField* best = nullptr;
    std::int64_t bestWeight = 0;
    for (const auto& field : listOf(mFields)) {
        if (!hasType(field, QVBusinessCardFieldTypeName) || field->weight() <= bestWeight) continue;
        best = field.get();
        bestWeight = field->weight();
    }
    return best ? best->text() : std::nullopt;
}

QVStringArray QVBusinessCard::emails() const {
    return textsOfType(mFields, QVBusinessCardFieldTypeEmail);
}

QVStringArray QVBusinessCard::phoneNumbers() const {
    return textsOfType(mFields, QVBusinessCardFieldTypePhone);
}

void QVBusinessCard::mergeWithCard(const std::shared_ptr<QVBusinessCard>& card) {
    if (!card) return;
    auto merged = std::make_shared<FieldList>(listOf(mFields));
    const FieldIndex before(listOf(mFields));
    for (const auto& field : listOf(card->mFields)) {
        if (field && !before.contains(*field)) merged->push_back(field);
    }
    mFields = std::move(merged);
}

bool QVBusinessCard::hasField(const std::shared_ptr<QVBusinessCardField>& field) const {
    if (!field || !field->text()) return false;
    const FieldList& fields = listOf(mFields);
    return std::any_of(fields.begin(), fields.end(), [&](const auto& own) {
        return own && own->type() == field->type() && own->text() == field->text();
    });
}

std::string QVBusinessCard::description() const {
    std::string text = "Business Card\n";
    for (const auto& field : listOf(mFields)) {
        if (field) text += field->description() + "\n";
    }
    return text;
}
