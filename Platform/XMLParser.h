#pragma once

#include "Error.h"
#include "Export.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace qv {

/// Domain of the parser's errors; codes are expat's.
inline constexpr std::string_view kXMLParserErrorDomain = "QVXMLParserErrorDomain";

/// Receives a document's events in document order, on the thread that parses.
class QV_EXPORT XMLParserDelegate {
  public:
    virtual ~XMLParserDelegate() = default;
    /// An element begins.
    virtual void didStartElement(const std::string& elementName,
                                 const std::map<std::string, std::string>& attributes) = 0;
    /// An element ends.
    virtual void didEndElement(const std::string& elementName) = 0;
    /// Text, possibly in several pieces, entities resolved; CDATA is text.
    virtual void foundCharacters(std::string_view string) = 0;
    /// At most once; no event follows.
    virtual void parseErrorOccurred(const Error& parseError) = 0;
};

/// An event-driven XML parser over UTF-8 text. A declared encoding is ignored, namespaces are not processed and nothing
/// external is ever loaded. Hostile documents end in an error: more than 10 000 elements inside each other, more than
/// 500 declared entities and attributes, entities that make a long document ten times as long. Any thread may parse.
class QV_EXPORT XMLParser {
  public:
    /// Runs the document to its end or its first error; false when there was one. The delegate is borrowed; what it
    /// throws ends the run and reaches the caller.
    static bool parse(std::string_view utf8, XMLParserDelegate& delegate);
};

}  // namespace qv
