#include "VCard/VCardLine.h"

#include "QVPlatform/Text.h"
#include "VCard/VCardEncoding.h"
#include "VCard/VCardParameters.h"

namespace {

constexpr std::size_t kWidth = 75;

std::string headOf(const QVVCardProperty& property) {
    return (property.group.empty() ? "" : property.group + '.') + property.name +
           textOfParameters(property.version, property.parameters);
}

std::string folded(std::string_view line, std::string_view lineEnd) {
    std::string result;
    std::size_t column = 0;
    for (std::size_t i = 0; i < line.size();) {
        const std::size_t length = sequenceLength(line, i);
        if (column + length > kWidth) {
            result.append(lineEnd).append(" ");
            column = 1;
        }
        result += line.substr(i, length);
        column += length;
        i += length;
    }
    return result.append(lineEnd);
}

bool isPlain(const QVVCardProperty& property, std::string_view line) {
    return line.size() <= kWidth && isASCII(line) && property.value.find('\n') == std::string::npos;
}

/// versit's 2.1: base64 ends with an empty line; other texts cannot be folded anywhere.
std::string lineOf21(const QVVCardProperty& property, std::string_view lineEnd) {
    const std::string line = headOf(property) + ':' + property.value;
    if (property.isBase64()) return folded(line, lineEnd).append(lineEnd);
    if (isPlain(property, line)) return line + std::string(lineEnd);
    std::string head = headOf(property);
    if (!isASCII(property.value)) head += ";CHARSET=UTF-8";
    head += ";ENCODING=QUOTED-PRINTABLE:";
    return head + quotedPrintable(property.value, head.size(), kWidth, lineEnd) + std::string(lineEnd);
}

}  // namespace

VCardLine lineWithProperty(const QVVCardProperty& property, std::string_view lineEnd) {
    VCardLine line;
    line.property = property;
    // The writer chooses how to encode.
    std::erase_if(line.property->parameters, [&](const QVVCardParameter& parameter) {
        const std::string name = capitals(parameter.name);
        const bool isText = !property.isBase64();
        return isText && (name == "CHARSET" || name == "ENCODING" ||
                          (name.empty() && capitals(parameter.values.front()) == "QUOTED-PRINTABLE"));
    });
    // What came out of quoted-printable may hold line ends as they are.
    const std::string value = qv::Text::replaceAll(property.value, "\n", "\\n");
    line.bytes = property.version == QVVCardVersion::V21 ? lineOf21(*line.property, lineEnd)
                                                         : folded(headOf(*line.property) + ':' + value, lineEnd);
    return line;
}
