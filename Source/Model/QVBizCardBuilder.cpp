#include "QVBizCardBuilder.h"

#include "QVCardScan/QVCardProcessingError.h"
#include "QVPlatform/Log.h"
#include "QVPlatform/Text.h"

#include <utility>

namespace {

QVString attribute(const std::map<std::string, std::string>& attributes, std::string_view name) {
    const auto found = attributes.find(std::string(name));
    return found == attributes.end() ? QVString() : found->second;
}

std::int64_t integerAttribute(const std::map<std::string, std::string>& attributes, std::string_view name) {
    return qv::Text::integerValue(attribute(attributes, name).value_or(""));
}

}  // namespace

void QVBizCardBuilder::didStartElement(const std::string& elementName,
                                       const std::map<std::string, std::string>& attributes) {
    qv::Log::write("Parser started element: %@ attributes: %@", elementName, attributes);
    if (elementName == CardRecoElementRoot) {
        prepareCardWithAttributeDict(attributes);
    } else if (elementName == CardRecoElementItem) {
        prepareCardField();
        addCardField(attributes);
    } else if (elementName == CardRecoElementText) {
        readWeight(attributes);
    }
}

void QVBizCardBuilder::foundCharacters(std::string_view string) {
    qv::Log::write("===> Parser found characters: %@", string);
    if (mCurrentCardField) mCurrentValue += string;
}

void QVBizCardBuilder::didEndElement(const std::string& elementName) {
    qv::Log::write("Parser ended element: %@", elementName);
    if (elementName == CardRecoElementRoot) finishCard();
}

void QVBizCardBuilder::parseErrorOccurred(const qv::Error& parseError) {
    mError = qv::Error{std::string(kQVCardProcessingErrorDomain),
                       QVCardProcessingErrorParseFailed,
                       {{std::string(kQVCardProcessingUnderlyingErrorKey), parseError}}};
}

void QVBizCardBuilder::prepareCardWithAttributeDict(const std::map<std::string, std::string>& attributes) {
    mCurrentCard = std::make_shared<QVBusinessCard>();
    mCurrentCard->setLanguage(attribute(attributes, CardRecoPropertyLanguage));
    mCurrentCard->setCardWidth(integerAttribute(attributes, CardRecoPropertyCardWidth));
    mCurrentCard->setCardHeight(integerAttribute(attributes, CardRecoPropertyCardHeight));
    const bool isFirst = !mCardFields;
    mCardFields = std::make_shared<QVFieldArray::element_type>();
    if (isFirst) reserveFields();
    mFinishedFields.reset();
}

// Only for the first card, since a document may begin thousands.
void QVBizCardBuilder::reserveFields() {
    constexpr std::string_view kItemStart = "<item";
    std::size_t count = 0;
    for (std::size_t place = 0; (place = mDocument.find(kItemStart, place)) != std::string_view::npos; ++count)
        place += kItemStart.size();
    mCardFields->reserve(count);
}

void QVBizCardBuilder::prepareCardField() {
    finishCardField();
    mCurrentCardField = nullptr;
    mCurrentValue.clear();
}

void QVBizCardBuilder::addCardField(const std::map<std::string, std::string>& attributes) {
    auto field = mFieldStore.newField();
    mCurrentCardField = field.get();
    mParser.readCardField(*field, attributes);
    if (mCardFields) mCardFields->push_back(std::move(field));
}

void QVBizCardBuilder::readWeight(const std::map<std::string, std::string>& attributes) {
    const QVString weight = attribute(attributes, CardRecoPropertyWeight);
    if (weight && mCurrentCardField) mCurrentCardField->setWeight(qv::Text::integerValue(*weight));
}

// The text is everything from an item to the next or to the end of the document, so it is complete, and repaired, only
// then. No characters, no assignment: the text stays absent.
void QVBizCardBuilder::finishCardField() {
    if (mCurrentCardField && !mCurrentValue.empty()) mCurrentCardField->setText(mCurrentValue);
}

// The card's fields are those known at this point; what follows is not the card's. They are handed over at the end,
// once: ten thousand roots inside each other would copy them ten thousand times.
void QVBizCardBuilder::finishCard() {
    mFinishedFields = mCardFields->size();
}

std::shared_ptr<QVBusinessCard> QVBizCardBuilder::takeCard() {
    finishCardField();
    if (mFinishedFields) {
        mCardFields->resize(*mFinishedFields);
        mCurrentCard->setFields(std::move(mCardFields));
    }
    return std::move(mCurrentCard);
}
