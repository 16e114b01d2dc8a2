#include "QVPlatform/XMLParser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

// Writes the events down; text that arrives in several pieces is one event.
class Recorder : public qv::XMLParserDelegate {
  public:
    void didStartElement(const std::string& elementName,
                         const std::map<std::string, std::string>& attributes) override {
        std::string event = "<" + elementName;
        for (const auto& [name, value] : attributes)
            event.append(" ").append(name).append("=").append(value);
        events.push_back(event);
    }
    void didEndElement(const std::string& elementName) override { events.push_back("/" + elementName); }
    void foundCharacters(std::string_view string) override {
        EXPECT_FALSE(string.empty());
        if (events.empty() || events.back().front() != '"') events.emplace_back("\"");
        events.back() += string;
        characterCount += string.size();
    }
    void parseErrorOccurred(const qv::Error& parseError) override {
        events.push_back("error");
        error = parseError;
    }

    std::string description() const {
        return std::any_cast<std::string>(error.userInfo.at(std::string(qv::kErrorDescriptionKey)));
    }

    std::vector<std::string> events;
    std::size_t characterCount = 0;
    qv::Error error;
};

TEST(XMLParser, DeliversEventsInDocumentOrder) {
    Recorder recorder;
    EXPECT_TRUE(qv::XMLParser::parse("<a y='2' x='1'>one<b/>two</a>", recorder));
    EXPECT_THAT(recorder.events, ElementsAre("<a x=1 y=2", "\"one", "<b", "/b", "\"two", "/a"));
}

struct TextRow {
    const char* name;
    std::string document;
    std::string text;
};

const TextRow kTexts[] = {
    {"entities", "<a>&lt;&amp;&gt;&quot;&apos;&#65;&#x4E2D;</a>", "<&>\"'A\u4E2D"},
    {"CDATA", "<a>x<![CDATA[<b>&amp;]]>y</a>", "x<b>&amp;y"},
    {"comments and instructions", "<a>x<!-- no --><?no no?>y</a>", "xy"},
    {"line ends", "<a>x\r\ny\rz\n</a>", "x\ny\nz\n"},
    {"white space", "<a> \t </a>", " \t "},
    {"byte order mark", "\xEF\xBB\xBF<a>\u00E4</a>", "\u00E4"},
    {"declared encoding", "<?xml version='1.0' encoding='ISO-8859-1'?><a>\u00E4</a>", "\u00E4"},
    {"declared wide encoding", "<?xml version='1.0' encoding='UTF-16'?><a>\u00E4</a>", "\u00E4"},
    {"unknown encoding", "<?xml version='1.0' encoding='no-such'?><a>\u00E4</a>", "\u00E4"},
    {"beyond the basic plane", "<a>\U0001F600</a>", "\U0001F600"},
    {"internal entity", "<!DOCTYPE a [<!ENTITY who 'J&#38;#38;S'>]><a>&who;</a>", "J&S"},
    {"external entity", "<!DOCTYPE a [<!ENTITY f SYSTEM '/etc/passwd'>]><a>x&f;y</a>", "xy"},
    {"external document type", "<!DOCTYPE a SYSTEM 'http://127.0.0.1:1/x.dtd'><a>x</a>", "x"},
    {"external parameter entity", "<!DOCTYPE a [<!ENTITY % p SYSTEM '/etc/passwd'>%p;]><a>x</a>", "x"},
};

TEST(XMLParser, ResolvesText) {
    for (const auto& row : kTexts) {
        Recorder recorder;
        EXPECT_TRUE(qv::XMLParser::parse(row.document, recorder)) << row.name;
        EXPECT_THAT(recorder.events, ElementsAre("<a", "\"" + row.text, "/a")) << row.name;
    }
}

TEST(XMLParser, DoesNotProcessNamespaces) {
    Recorder recorder;
    EXPECT_TRUE(qv::XMLParser::parse("<p:a xmlns:p='urn:x' p:b='1'/>", recorder));
    EXPECT_THAT(recorder.events, ElementsAre("<p:a p:b=1 xmlns:p=urn:x", "/p:a"));
}

TEST(XMLParser, DeliversMarkupInsideAnEntity) {
    Recorder recorder;
    EXPECT_TRUE(qv::XMLParser::parse("<!DOCTYPE a [<!ENTITY e 'x<b/>'>]><a>&e;</a>", recorder));
    EXPECT_THAT(recorder.events, ElementsAre("<a", "\"x", "<b", "/b", "/a"));
}

struct ErrorRow {
    const char* name;
    std::string document;
    std::vector<std::string> events;
    const char* description;
};

const ErrorRow kErrors[] = {
    {"empty", "", {"error"}, "(line 1, column 1)"},
    {"white space only", " \n ", {"error"}, "no element found"},
    {"plain text", "hello", {"error"}, "syntax error"},
    {"mismatch", "<a>x<b></a>", {"<a", "\"x", "<b", "error"}, "mismatched tag (line 1, column 10)"},
    {"cut", "<a>x\n<b", {"<a", "\"x\n", "error"}, "(line 2,"},
    {"second document", "<a/>\n<b/>", {"<a", "/a", "error"}, "junk after document element (line 2, column 1)"},
    {"undefined entity", "<a>&no;</a>", {"<a", "error"}, "undefined entity"},
    {"same attribute twice", "<a x='1' x='2'/>", {"error"}, "duplicate attribute"},
    {"NUL", std::string("<a>\0</a>", 8), {"<a", "error"}, "invalid token"},
    {"malformed UTF-8", "<a>\xE4</a>", {"<a", "error"}, "invalid token"},
    {"surrogate", "<a>\xED\xA0\x80</a>", {"<a", "error"}, "invalid token"},
    {"entity that holds itself", "<!DOCTYPE a [<!ENTITY e '&e;'>]><a>&e;</a>", {"<a", "error"}, "recursive entity"},
    {"little-endian UTF-16", std::string("<\0a\0/\0>\0", 8), {"error"}, "invalid token"},
    {"big-endian UTF-16", std::string("\0<\0a\0/\0>", 8), {"error"}, "invalid token"},
    {"marked little-endian", std::string("\xFF\xFE<\0a\0/\0>\0", 10), {"error"}, "invalid token"},
    {"marked big-endian", std::string("\xFE\xFF\0<\0a\0/\0>", 10), {"error"}, "invalid token"},
};

TEST(XMLParser, StopsAtTheFirstError) {
    for (const auto& row : kErrors) {
        Recorder recorder;
        EXPECT_FALSE(qv::XMLParser::parse(row.document, recorder)) << row.name;
        EXPECT_EQ(recorder.events, row.events) << row.name;
        EXPECT_EQ(recorder.error.domain, qv::kXMLParserErrorDomain) << row.name;
        EXPECT_GT(recorder.error.code, 0) << row.name;
        EXPECT_THAT(recorder.description(), HasSubstr(row.description)) << row.name;
    }
}

std::string repeated(std::size_t count, const std::string& text) {
    std::string result;
    result.reserve(count * text.size());
    for (std::size_t index = 0; index < count; ++index)
        result += text;
    return result;
}

// Ten entities, each ten times the one before: three gigabytes from half a kilobyte.
TEST(XMLParser, LimitsTheGrowthOfEntities) {
    std::string document = "<!DOCTYPE a [<!ENTITY e0 'lol'>";
    for (int level = 1; level < 10; ++level) {
        document +=
            "<!ENTITY e" + std::to_string(level) + " '" + repeated(10, "&e" + std::to_string(level - 1) + ";") + "'>";
    }
    Recorder recorder;
    EXPECT_FALSE(qv::XMLParser::parse(document + "]><a>&e9;</a>", recorder));
    EXPECT_LT(recorder.characterCount, std::size_t{4'000'000});
    EXPECT_EQ(recorder.events.back(), "error");
}

TEST(XMLParser, LimitsOneEntityUsedOften) {
    const std::string document = "<!DOCTYPE a [<!ENTITY e '" + std::string(100'000, 'x') + "'>]><a>";
    Recorder recorder;
    EXPECT_FALSE(qv::XMLParser::parse(document + repeated(100'000, "&e;") + "</a>", recorder));
    EXPECT_LT(recorder.characterCount, std::size_t{20'000'000});
}

TEST(XMLParser, TakesModestEntities) {
    const std::string document = "<!DOCTYPE a [<!ENTITY e '" + std::string(100, 'x') + "'>]><a>";
    Recorder recorder;
    EXPECT_TRUE(qv::XMLParser::parse(document + repeated(1'000, "&e;") + "</a>", recorder));
    EXPECT_EQ(recorder.characterCount, std::size_t{100'000});
}

// Each level of entities inside entities is a level of the machine's stack.
TEST(XMLParser, LimitsTheNumberOfEntities) {
    std::string document = "<!DOCTYPE a [<!ENTITY e0 'x'>";
    for (int level = 1; level < 100'000; ++level) {
        document += "<!ENTITY e" + std::to_string(level) + " '&e" + std::to_string(level - 1) + ";'>";
    }
    Recorder recorder;
    EXPECT_FALSE(qv::XMLParser::parse(document + "]><a>&e99999;</a>", recorder));
    EXPECT_THAT(recorder.events, ElementsAre("error"));
}

TEST(XMLParser, FollowsAsManyEntitiesAsItTakes) {
    std::string document = "<!DOCTYPE a [<!ENTITY e0 'x'>";
    for (int level = 1; level < 500; ++level) {
        document += "<!ENTITY e" + std::to_string(level) + " '&e" + std::to_string(level - 1) + ";'>";
    }
    Recorder recorder;
    EXPECT_TRUE(qv::XMLParser::parse(document + "]><a b='&e499;'>&e499;</a>", recorder));
    EXPECT_THAT(recorder.events, ElementsAre("<a b=x", "\"x", "/a"));
}

// Attributes that a document type gives to every element multiply the document just as entities do.
TEST(XMLParser, LimitsDefaultAttributes) {
    std::string document = "<!DOCTYPE a [<!ATTLIST b";
    for (int index = 0; index < 2'000; ++index)
        document += " a" + std::to_string(index) + " CDATA 'value'";
    Recorder recorder;
    EXPECT_FALSE(qv::XMLParser::parse(document + ">]><a>" + repeated(200'000, "<b/>") + "</a>", recorder));
    EXPECT_LT(recorder.events.size(), std::size_t{10'000});
    EXPECT_EQ(recorder.events.back(), "error");
}

TEST(XMLParser, DeliversModestDefaultAttributes) {
    Recorder recorder;
    EXPECT_TRUE(qv::XMLParser::parse("<!DOCTYPE a [<!ATTLIST a x CDATA '1' y CDATA '2'>]><a y='3'/>", recorder));
    EXPECT_THAT(recorder.events, ElementsAre("<a x=1 y=3", "/a"));
}

// Each is compared with all before it.
TEST(XMLParser, LimitsTheNumberOfDeclaredAttributes) {
    std::string document = "<!DOCTYPE a [<!ATTLIST a";
    for (int index = 0; index < 500'000; ++index)
        document += " a" + std::to_string(index) + " CDATA #IMPLIED";
    Recorder recorder;
    EXPECT_FALSE(qv::XMLParser::parse(document + ">]><a/>", recorder));
    EXPECT_THAT(recorder.events, ElementsAre("error"));
}

TEST(XMLParser, LimitsDepth) {
    Recorder recorder;
    EXPECT_TRUE(qv::XMLParser::parse(repeated(10'000, "<a>") + repeated(10'000, "</a>"), recorder));
    EXPECT_EQ(recorder.events.size(), std::size_t{20'000});
    Recorder stopped;
    EXPECT_FALSE(qv::XMLParser::parse(repeated(1'000'000, "<a>"), stopped));
    EXPECT_EQ(stopped.events.size(), std::size_t{10'001}) << "as many elements and the error";
}

TEST(XMLParser, TakesLongDocuments) {
    Recorder recorder;
    EXPECT_TRUE(qv::XMLParser::parse("<a>" + std::string(100'000'000, 'x') + "</a>", recorder));
    EXPECT_EQ(recorder.characterCount, std::size_t{100'000'000});
    Recorder attribute;
    EXPECT_TRUE(qv::XMLParser::parse("<a b='" + std::string(8'000'000, 'x') + "'/>", attribute));
    EXPECT_EQ(attribute.events.front().size(), std::size_t{8'000'005});
}

class Thrower : public Recorder {
  public:
    void didStartElement(const std::string& elementName,
                         const std::map<std::string, std::string>& attributes) override {
        Recorder::didStartElement(elementName, attributes);
        if (elementName == "b") throw std::runtime_error("enough");
    }
};

TEST(XMLParser, HandsOnWhatTheDelegateThrows) {
    Thrower thrower;
    EXPECT_THROW(qv::XMLParser::parse("<a><b/><c/></a>", thrower), std::runtime_error);
    EXPECT_THAT(thrower.events, ElementsAre("<a", "<b")) << "no event follows";
}

}  // namespace
