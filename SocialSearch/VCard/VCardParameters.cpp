#include "VCard/VCardParameters.h"

#include "VCard/VCardText.h"

namespace {

constexpr std::size_t kMaximumParameters = 256;
constexpr std::size_t kMaximumLength = 65536;

/// Reads from the front of a text, piece by piece.
class ParameterReader {
  public:
    ParameterReader(QVVCardVersion version, std::string_view text)
        : mKnowsQuotes(version != QVVCardVersion::V21), mText(text.substr(0, kMaximumLength)) {}

    std::optional<ParameterList> read() {
        ParameterList list;
        while (next() == ';') {
            ++mPosition;
            if (list.parameters.size() == kMaximumParameters) return std::nullopt;
            const std::optional<QVVCardParameter> parameter = readParameter();
            if (!parameter) return std::nullopt;
            if (!parameter->values.empty()) list.parameters.push_back(*parameter);
        }
        if (next() != ':') return std::nullopt;
        list.length = mPosition + 1;
        return list;
    }

  private:
    /// The next character; 0 at the end, where nothing else may stand either.
    char next() const { return mPosition < mText.size() ? mText[mPosition] : '\0'; }

    std::optional<QVVCardParameter> readParameter() {
        QVVCardParameter parameter;
        const std::size_t end = mText.find_first_of("=;:\"", mPosition);
        if (end != std::string_view::npos && mText[end] == '=') {
            parameter.name = mText.substr(mPosition, end - mPosition);
            mPosition = end + 1;
        } else if (next() == ';' || next() == ':') {
            return parameter;
        }
        for (;;) {
            const std::optional<std::string> value = readValue();
            if (!value || parameter.values.size() == kMaximumParameters) return std::nullopt;
            parameter.values.push_back(*value);
            if (next() != ',') return parameter;
            ++mPosition;
        }
    }

    std::optional<std::string> readValue() {
        const bool isQuoted = mKnowsQuotes && next() == '"';
        if (isQuoted) ++mPosition;
        const std::size_t end = mText.find_first_of(isQuoted ? "\"" : ",;:", mPosition);
        if (end == std::string_view::npos) return std::nullopt;
        const std::string_view value = mText.substr(mPosition, end - mPosition);
        mPosition = end + (isQuoted ? 1 : 0);
        return mKnowsQuotes ? withoutCarets(value) : std::string(value);
    }

    static std::string withoutCarets(std::string_view value) {
        std::string text;
        for (std::size_t i = 0; i < value.size(); ++i) {
            const char escape = value[i] == '^' && i + 1 < value.size() ? value[i + 1] : '\0';
            const bool isEscape = escape == '^' || escape == 'n' || escape == '\'';
            text += !isEscape ? value[i] : escape == 'n' ? '\n' : escape == '\'' ? '"' : '^';
            if (isEscape) ++i;
        }
        return text;
    }

    bool mKnowsQuotes;
    std::string_view mText;
    std::size_t mPosition = 0;
};

std::string withCarets(std::string_view value) {
    std::string text;
    for (const char c : value)
        text += c == '^' ? "^^" : c == '\n' ? "^n" : c == '"' ? "^'" : std::string(1, c);
    return text;
}

std::string textOfValue(QVVCardVersion version, const std::string& value) {
    if (version == QVVCardVersion::V21) return value;
    const std::string text = withCarets(value);
    return text.find_first_of(",;:") == std::string::npos ? text : '"' + text + '"';
}

}  // namespace

std::optional<ParameterList> parametersInLine(QVVCardVersion version, std::string_view text) {
    return ParameterReader(version, text).read();
}

std::string textOfParameters(QVVCardVersion version, const std::vector<QVVCardParameter>& parameters) {
    std::string text;
    for (const QVVCardParameter& parameter : parameters) {
        std::string values;
        for (const std::string& value : parameter.values)
            values += (values.empty() ? "" : ",") + textOfValue(version, value);
        text += ';' + parameter.name + (parameter.name.empty() ? "" : "=") + values;
    }
    return text;
}
