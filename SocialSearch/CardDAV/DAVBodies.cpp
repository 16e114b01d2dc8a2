#include "CardDAV/DAVBodies.h"

#include "QVPlatform/Text.h"

#include <algorithm>

namespace {

constexpr std::string_view kHead = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
constexpr std::string_view kSpaces = " xmlns=\"DAV:\" xmlns:C=\"urn:ietf:params:xml:ns:carddav\">";

bool isOutsideOfXML(char16_t unit) {
    return unit < u' ' || unit == 0xFFFE || unit == 0xFFFF;
}

std::string escaped(std::string_view text) {
    std::u16string units = qv::Text::utf16(text);
    std::replace_if(units.begin(), units.end(), isOutsideOfXML, u' ');
    std::string result;
    for (const char c : qv::Text::utf8(units)) {
        if (c == '&') {
            result += "&amp;";
        } else if (c == '<') {
            result += "&lt;";
        } else if (c == '>') {
            result += "&gt;";
        } else {
            result += c;
        }
    }
    return result;
}

std::string document(std::string_view element, std::string_view contents) {
    std::string text(kHead);
    text.append("<").append(element).append(kSpaces).append(contents);
    return text.append("</").append(element).append(">\n");
}

}  // namespace

std::string wayBody() {
    return document("propfind",
                    "<prop><resourcetype/><current-user-principal/><C:addressbook-home-set/>"
                    "<current-user-privilege-set/></prop>");
}

std::string listBody() {
    return document("propfind", "<prop><resourcetype/><getetag/><getcontenttype/></prop>");
}

std::string queryBody(std::string_view property, std::string_view text) {
    // Neither collation nor kind of match is named: the ones that go without saying are known to more servers.
    return document("C:addressbook-query", "<prop><getetag/><C:address-data/></prop><C:filter><C:prop-filter name=\"" +
                                               escaped(property) + "\"><C:text-match>" + escaped(text) +
                                               "</C:text-match></C:prop-filter></C:filter>");
}

std::string multigetBody(const std::vector<std::string>& hrefs) {
    std::string contents = "<prop><getetag/><C:address-data/></prop>";
    for (const std::string& href : hrefs)
        contents += "<href>" + escaped(href) + "</href>";
    return document("C:addressbook-multiget", contents);
}
