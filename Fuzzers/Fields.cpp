// What a card's lines say. The first line is the language; "#" in front makes the type larger, a tab begins another
// column, and "a|b" is a word that was read in two ways.

#include "Fields/FieldDecision.h"
#include "QVCardScan/QVBizCardParser.h"
#include "Result/ResultWriter.h"
#include "Support/Input.h"
#include "Support/Require.h"
#include "Text/Letters.h"

#include <algorithm>

using fuzzing::require;
using namespace qv::recognition;

namespace {

constexpr std::size_t kMostLines = 60;

Word wordOf(const std::string& readings, float x, float y, float size) {
    std::vector<std::string> texts = fuzzing::partsOf(readings, '|');
    Word word;
    word.text = texts.front();
    word.box = {x, y, static_cast<float>(length(word.text)) * size * 0.7F, size};
    word.confidence = 90;
    word.others.assign(texts.begin() + 1, texts.end());
    return word;
}

TextLine lineOf(const std::string& column, float left, float y) {
    const std::size_t larger = std::min<std::size_t>(column.find_first_not_of('#'), 9);
    const float size = 20 + 10 * static_cast<float>(larger);
    std::vector<Word> words;
    for (const std::string& part : splitAtSpaces(column.substr(std::min(larger, column.size())))) {
        Word word = wordOf(part, left, y, size);
        left = word.box.right() + size * 0.4F;
        if (!word.text.empty()) words.push_back(std::move(word));
    }
    return makeLine(std::move(words));
}

std::vector<TextLine> linesOf(const std::vector<std::string>& texts) {
    std::vector<TextLine> lines;
    for (std::size_t i = 1; i < std::min(texts.size(), kMostLines); ++i) {
        float left = 40;
        for (const std::string& column : fuzzing::partsOf(texts[i], '\t')) {
            TextLine line = lineOf(column, left, 120 * static_cast<float>(i));
            left += 600;
            if (!line.words.empty()) lines.push_back(std::move(line));
        }
    }
    return lines;
}

void checkAnswer(const std::vector<Field>& fields, const std::string& language) {
    Result result{.language = language, .width = 2000, .height = 4000, .orient = 0, .items = {}};
    result.items.reserve(fields.size());
    for (const Field& field : fields)
        result.items.push_back({"name", field.text, field.box, 50});
    std::optional<qv::Error> error = qv::Error{"asked for", 1, {}};
    const auto card = QVBizCardParser().parse(writeResult(result), &error);
    require(!error && card && card->fields(), "an answer is well-formed");
    require(card->fields()->size() == fields.size(), "an answer has every field");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    // An engine's words are UTF-8.
    const std::string text = qv::Text::utf8(qv::Text::utf16(fuzzing::textOf(bytes, count)));
    const auto texts = fuzzing::partsOf(text, '\n');
    const std::vector<Field> fields = decideFields(linesOf(texts), texts.front());
    const auto isName = [](const Field& field) { return field.type == FieldType::Name; };
    require(std::count_if(fields.begin(), fields.end(), isName) <= 1, "at most one field is a name");
    for (const Field& field : fields) {
        require(!field.text.empty() && fuzzing::isUTF8(field.text), "a field is text");
        require(field.likelihood >= 0 && field.likelihood <= 1, "a likelihood lies between 0 and 1");
    }
    checkAnswer(fields, texts.front());
    return 0;
}
