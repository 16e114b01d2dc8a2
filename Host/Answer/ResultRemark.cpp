#include "Answer/ResultRemark.h"

#include "QVCardScan/QVCardRecoVocabulary.h"
#include "QVPlatform/XMLParser.h"

#include <any>
#include <cstddef>
#include <map>
#include <string_view>

namespace qvhost {
namespace {

constexpr std::string_view kWhatToGive =
    " Give the answer of a recognition server, such as the result-front.xml that \"qvcardscan scan FRONT -o DIR\" "
    "writes.";

/// What an answer's markup amounts to.
class Shape : public qv::XMLParserDelegate {
  public:
    explicit Shape(const std::string& text) { qv::XMLParser::parse(text, *this); }

    const std::string& root() const { return mRoot; }
    bool hasResult() const { return mOpened > 0; }
    bool resultEnds() const { return mClosed > 0; }
    /// What is wrong with it, and in which line and column.
    const std::optional<std::string>& error() const { return mError; }

    void didStartElement(const std::string& elementName, const std::map<std::string, std::string>&) override {
        if (mRoot.empty()) mRoot = elementName;
        if (elementName == CardRecoElementRoot) ++mOpened;
    }
    void didEndElement(const std::string& elementName) override {
        if (elementName == CardRecoElementRoot) ++mClosed;
    }
    void foundCharacters(std::string_view) override {}
    void parseErrorOccurred(const qv::Error& parseError) override {
        const auto found = parseError.userInfo.find(std::string(qv::kErrorDescriptionKey));
        const auto* text = found != parseError.userInfo.end() ? std::any_cast<std::string>(&found->second) : nullptr;
        mError = text ? *text : "it cannot be read";
    }

  private:
    std::string mRoot;
    std::size_t mOpened = 0;
    std::size_t mClosed = 0;
    std::optional<std::string> mError;
};

std::string tag(const std::string& name) {
    constexpr std::size_t kLongest = 40;
    return name.size() > kLongest ? "another one" : "<" + name + ">";
}

bool isBlank(const std::string& text) {
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

std::string brokenResult(const std::string& name, const Shape& shape) {
    return name + " is broken XML: " + *shape.error() + "." +
           (shape.resultEnds() ? " What came before that counts." : " Its fields do not count, because it breaks off.");
}

}  // namespace

std::optional<std::string> resultRemark(const ResultFile& file) {
    if (isBlank(file.text))
        return file.name + " is empty. Servers answer so when they cannot read a picture; their log says why.";
    const Shape shape(file.text);
    if (shape.hasResult()) return shape.error() ? std::optional(brokenResult(file.name, shape)) : std::nullopt;
    const std::string end(kWhatToGive);
    if (shape.root().empty()) return file.name + " is not XML: " + shape.error().value_or("no element") + "." + end;
    if (shape.error()) return file.name + " is broken XML without a card: " + *shape.error() + "." + end;
    return file.name + " is XML, but no recognition result: its outermost element is " + tag(shape.root()) + ", not " +
           tag(std::string(CardRecoElementRoot)) + "." + end;
}

}  // namespace qvhost
