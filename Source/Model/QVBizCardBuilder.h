#pragma once

#include "QVCardFieldStore.h"
#include "QVCardScan/QVBizCardParser.h"
#include "QVPlatform/XMLParser.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// What the parser knows in the middle of one document: the card, the field and the text that are being collected.
/// Receives the document's events; the parser is borrowed.
class QVBizCardBuilder : public qv::XMLParserDelegate {
  public:
    /// Both are borrowed; the document says how many fields to expect.
    QVBizCardBuilder(const QVBizCardParser& parser, std::string_view document) : mParser(parser), mDocument(document) {}

    /// The card as the events so far left it; call once, at the end.
    std::shared_ptr<QVBusinessCard> takeCard();
    /// The failure that ended the document; nothing when there was none.
    const std::optional<qv::Error>& error() const { return mError; }

    /// `parser:didStartElement:namespaceURI:qualifiedName:attributes:`
    void didStartElement(const std::string& elementName, const std::map<std::string, std::string>& attributes) override;
    /// `parser:didEndElement:namespaceURI:qualifiedName:`
    void didEndElement(const std::string& elementName) override;
    /// `parser:foundCharacters:`
    void foundCharacters(std::string_view string) override;
    /// `parser:parseErrorOccurred:`
    void parseErrorOccurred(const qv::Error& parseError) override;

  private:
    /// `prepareCardWithAttributeDict:` A new card; one before it is dropped.
    void prepareCardWithAttributeDict(const std::map<std::string, std::string>& attributes);
    void reserveFields();
    void prepareCardField();
    void addCardField(const std::map<std::string, std::string>& attributes);
    void readWeight(const std::map<std::string, std::string>& attributes);
    /// `finishCard` The card has the fields that were collected up to now.
    void finishCard();
    void finishCardField();

    const QVBizCardParser& mParser;
    std::string_view mDocument;
    std::shared_ptr<QVBusinessCard> mCurrentCard;
    QVCardFieldStore mFieldStore;
    QVBusinessCardField* mCurrentCardField = nullptr;  ///< the store's newest, or none
    std::string mCurrentValue;
    QVFieldArray mCardFields;
    std::optional<std::size_t> mFinishedFields;
    std::optional<qv::Error> mError;
};
