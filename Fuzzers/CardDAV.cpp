// A multi-status answer of an address book's server, what it makes us ask next, and where that goes.

#include "CardDAV/DAVBodies.h"
#include "CardDAV/DAVMultistatus.h"
#include "QVPlatform/URL.h"
#include "QVPlatform/XMLParser.h"
#include "QVSocialSearch/QVVCardProfile.h"
#include "Support/Input.h"
#include "Support/Require.h"

using fuzzing::require;

namespace {

class Silence : public qv::XMLParserDelegate {
  public:
    void didStartElement(const std::string&, const std::map<std::string, std::string>&) override {}
    void didEndElement(const std::string&) override {}
    void foundCharacters(std::string_view) override {}
    void parseErrorOccurred(const qv::Error&) override {}
};

bool isWellFormed(const std::string& body) {
    Silence silence;
    return qv::XMLParser::parse(body, silence);
}

void checkReference(const std::string& href) {
    const auto base = qv::URL::URLWithString("https://dav.example/books/me/");
    const auto url = qv::URL::URLWithString(href, *base);
    if (url) require(qv::URL::URLWithString(url->absoluteString()).has_value(), "what is resolved is an address");
}

void checkCard(const std::string& bytes) {
    const auto card = QVVCard::cardWithBytes(bytes, nullptr);
    if (!card) return;
    require(card->bytes() == bytes, "a card is written as it was read");
    (void)qv::profileOfCard(*card, "uid")->description();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const std::string text = fuzzing::textOf(bytes, count);
    require(isWellFormed(queryBody("EMAIL", text)), "a question is XML, whatever is asked for");
    const auto resources = resourcesOfMultistatus(text);
    if (!resources) return 0;
    std::vector<std::string> hrefs;
    hrefs.reserve(resources->size());
    for (const DAVResource& resource : *resources) {
        hrefs.push_back(resource.href);
        for (const std::string& href : {resource.href, resource.principal, resource.home})
            checkReference(href);
        if (resource.card) checkCard(*resource.card);
    }
    require(isWellFormed(multigetBody(hrefs)), "a question is XML, whatever the references");
    return 0;
}
