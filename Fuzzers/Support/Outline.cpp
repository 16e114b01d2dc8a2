#include "Support/Outline.h"

#include "QVPlatform/XMLParser.h"
#include "Support/Input.h"

namespace fuzzing {

namespace {

class OutlineReader : public qv::XMLParserDelegate {
  public:
    void didStartElement(const std::string& elementName,
                         const std::map<std::string, std::string>& attributes) override {
        mOutline += '<' + elementName;
        for (const auto& attribute : attributes)
            mOutline += ' ' + attribute.first;
    }
    void didEndElement(const std::string&) override { mOutline += '>'; }
    void foundCharacters(std::string_view) override {}
    void parseErrorOccurred(const qv::Error&) override {}

    const std::string& outline() const { return mOutline; }

  private:
    std::string mOutline;
};

}  // namespace

std::optional<std::string> outlineOfNote(const std::string& note) {
    OutlineReader reader;
    const std::string document = "<!DOCTYPE div [<!ENTITY nbsp \"&#160;\">]>" + note;
    if (!qv::XMLParser::parse(document, reader)) return std::nullopt;
    return reader.outline();
}

bool isHarmlessLabel(const std::string& label) {
    return isXMLText(label) && label.find_first_of("<&\"") == std::string::npos &&
           label.find("]]>") == std::string::npos;
}

}  // namespace fuzzing
