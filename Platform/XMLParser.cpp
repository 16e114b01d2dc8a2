#include "QVPlatform/XMLParser.h"

// The limits on entities are declared only to those who ask for document types.
#define XML_DTD
#include <expat.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace qv {

namespace {

// Far beyond any real document, low enough that a hostile one stays harmless: each open element costs memory, each
// level of entities inside entities costs stack, and each attribute that is declared is compared with those before it.
constexpr std::size_t kMaximumDepth = 10'000;
constexpr std::size_t kMaximumDeclarations = 500;
// What a document may grow to through its entities, once it is large at all. Its default attributes may at most double
// it.
constexpr unsigned long long kGrowthThreshold = 1'048'576;
constexpr float kMaximumGrowth = 10;
constexpr std::size_t kBytesPerCall = std::size_t{1} << 26;

// One document's run. Nothing may be thrown through expat, which is C: what the delegate throws is kept and thrown
// again behind it.
class Run {
  public:
    Run(std::string_view text, XMLParserDelegate& delegate)
        : mParser(XML_ParserCreate("UTF-8")),
          mText(text),
          mDelegate(delegate),
          mDefaultsLeft(std::max<std::size_t>(kGrowthThreshold, text.size())) {
        if (!mParser) throw std::bad_alloc();
        XML_SetUserData(mParser.get(), this);
        XML_SetElementHandler(mParser.get(), startElement, endElement);
        XML_SetCharacterDataHandler(mParser.get(), characters);
        XML_SetEntityDeclHandler(mParser.get(), entityDeclaration);
        XML_SetAttlistDeclHandler(mParser.get(), attributeDeclaration);
        XML_SetBillionLaughsAttackProtectionMaximumAmplification(mParser.get(), kMaximumGrowth);
        XML_SetBillionLaughsAttackProtectionActivationThreshold(mParser.get(), kGrowthThreshold);
    }

    bool toItsEnd() {
        if (looksLikeUTF16()) return fail(XML_ERROR_INVALID_TOKEN);
        if (parseAll()) return true;
        if (mThrown) std::rethrow_exception(mThrown);
        return fail(XML_GetErrorCode(mParser.get()));
    }

  private:
    struct Free {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };

    // Whatever encoding it is told, expat falls for these first bytes; none of them begins a UTF-8 document.
    bool looksLikeUTF16() const {
        const std::string_view start = mText.substr(0, 2);
        return start.find('\0') != std::string_view::npos || start == "\xFE\xFF" || start == "\xFF\xFE";
    }

    bool parseAll() {
        std::string_view rest = mText;
        do {
            const std::string_view piece = rest.substr(0, kBytesPerCall);
            rest.remove_prefix(piece.size());
            const auto length = static_cast<int>(piece.size());
            if (XML_Parse(mParser.get(), piece.data(), length, rest.empty()) != XML_STATUS_OK) return false;
        } while (!rest.empty());
        return true;
    }

    bool fail(XML_Error code) {
        const auto line = static_cast<unsigned long long>(XML_GetCurrentLineNumber(mParser.get()));
        const auto column = static_cast<unsigned long long>(XML_GetCurrentColumnNumber(mParser.get())) + 1;
        Error error{std::string(kXMLParserErrorDomain), static_cast<long>(code), {}};
        error.userInfo[std::string(kErrorDescriptionKey)] = std::string(XML_ErrorString(code)) + " (line " +
                                                            std::to_string(line) + ", column " +
                                                            std::to_string(column) + ")";
        mDelegate.parseErrorOccurred(error);
        return false;
    }

    void stop() {
        mStopped = true;
        XML_StopParser(mParser.get(), /*resumable=*/XML_FALSE);
    }

    // Attributes that the document type gives to every element are not among what expat limits.
    void countDefault(std::size_t bytes) {
        if (bytes > mDefaultsLeft) return stop();
        mDefaultsLeft -= bytes;
    }

    void countDeclaration() {
        if (++mDeclarations > kMaximumDeclarations) stop();
    }

    template <typename Event>
    static void guarded(void* userData, Event event) {
        Run& run = *static_cast<Run*>(userData);
        if (run.mStopped) return;
        try {
            event(run);
        } catch (...) {
            run.mThrown = std::current_exception();
            run.stop();
        }
    }

    static void startElement(void* userData, const XML_Char* name, const XML_Char** attributes) {
        guarded(userData, [=](Run& run) { run.start(name, attributes); });
    }

    void start(const XML_Char* name, const XML_Char** attributes) {
        if (++mDepth > kMaximumDepth) return stop();
        setName(name);
        mEndsNext = true;
        if (!mAttributes.empty()) mAttributes.clear();
        if (*attributes) collect(attributes);
        if (!mStopped) mDelegate.didStartElement(mName, mAttributes);
    }

    void collect(const XML_Char** attributes) {
        const XML_Char** const defaults = attributes + XML_GetSpecifiedAttributeCount(mParser.get());
        for (; *attributes && !mStopped; attributes += 2) {
            const auto& [key, value] = *mAttributes.emplace(attributes[0], attributes[1]).first;
            if (attributes >= defaults) countDefault(key.size() + value.size());
        }
    }

    // Most events are about the element of the event before.
    void setName(const XML_Char* name) {
        if (std::strcmp(mName.c_str(), name) != 0) mName = name;
    }

    static void endElement(void* userData, const XML_Char* name) {
        guarded(userData, [=](Run& run) {
            --run.mDepth;
            if (!std::exchange(run.mEndsNext, false)) run.setName(name);
            run.mDelegate.didEndElement(run.mName);
        });
    }

    static void characters(void* userData, const XML_Char* string, int length) {
        guarded(userData, [=](Run& run) {
            run.mDelegate.foundCharacters(std::string_view(string, static_cast<std::size_t>(length)));
        });
    }

    static void entityDeclaration(void* userData, const XML_Char*, int, const XML_Char*, int, const XML_Char*,
                                  const XML_Char*, const XML_Char*, const XML_Char*) {
        guarded(userData, [](Run& run) { run.countDeclaration(); });
    }

    static void attributeDeclaration(void* userData, const XML_Char*, const XML_Char*, const XML_Char*, const XML_Char*,
                                     int) {
        guarded(userData, [](Run& run) { run.countDeclaration(); });
    }

    std::unique_ptr<std::remove_pointer_t<XML_Parser>, Free> mParser;
    std::string_view mText;
    XMLParserDelegate& mDelegate;
    std::size_t mDefaultsLeft;
    std::size_t mDepth = 0;
    std::size_t mDeclarations = 0;
    bool mStopped = false;
    std::exception_ptr mThrown;
    std::string mName;
    bool mEndsNext = false;  ///< the name is that of the element whose end comes next
    std::map<std::string, std::string> mAttributes;
};

}  // namespace

bool XMLParser::parse(std::string_view utf8, XMLParserDelegate& delegate) {
    return Run(utf8, delegate).toItsEnd();
}

}  // namespace qv
