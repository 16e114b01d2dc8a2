#include "Result/ResultWriter.h"

#include "Text/Letters.h"

#include <algorithm>
#include <cmath>

namespace qv::recognition {
namespace {

bool isAllowed(char32_t c) {
    return c != 0xFFFD && (c == 0x9 || c == 0xA || (c >= 0x20 && c <= 0xD7FF && !(c >= 0x7F && c <= 0x9F)) ||
                           (c >= 0xE000 && c < 0xFFFE) || (c >= 0x10000 && c <= 0x10FFFF));
}

std::string_view entity(char32_t c) {
    switch (c) {
        case U'&':
            return "&amp;";
        case U'<':
            return "&lt;";
        case U'>':
            return "&gt;";
        case U'"':
            return "&quot;";
        default:
            return {};
    }
}

std::string escaped(std::string_view text) {
    std::string result;
    for (const char32_t c : codePoints(text)) {
        if (const auto name = entity(c); !name.empty()) {
            result += name;
        } else if (isAllowed(c)) {
            result += c < 0x20 ? " " : toUTF8(std::u32string_view(&c, 1));
        }
    }
    return result;
}

std::string attribute(std::string_view name, const std::string& value) {
    return ' ' + std::string(name) + "=\"" + value + '"';
}

std::string attribute(std::string_view name, int value) {
    return attribute(name, std::to_string(value));
}

struct Frame {
    int x;
    int y;
    int w;
    int h;
};

Frame frameInside(const Box& box, const Result& result) {
    const auto inside = [](float value, int end) {
        return std::clamp(static_cast<int>(std::lround(value)), 0, std::max(0, end));
    };
    const int x = inside(box.x, result.width);
    const int y = inside(box.y, result.height);
    return {x, y, inside(box.right(), result.width) - x, inside(box.bottom(), result.height) - y};
}

std::string written(const ResultItem& item, const Result& result) {
    const Frame frame = frameInside(item.box, result);
    return "<item" + attribute("fldType", std::string(item.type)) + attribute("x", frame.x) + attribute("y", frame.y) +
           attribute("w", frame.w) + attribute("h", frame.h) + attribute("orient", result.orient) + "><t" +
           attribute("w", std::clamp(item.weight, 1, 100)) + '>' + escaped(item.text) + "</t></item>";
}

}  // namespace

std::string writeResult(const Result& result) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?><recoIndex" +
                      attribute("lang", escaped(result.language)) + attribute("objWidth", result.width) +
                      attribute("objHeight", result.height);
    if (result.items.empty()) return xml + "/>";
    xml += '>';
    for (const auto& item : result.items)
        xml += written(item, result);
    return xml + "</recoIndex>";
}

}  // namespace qv::recognition
