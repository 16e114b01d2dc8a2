// What a QR code on a card says of its bearer, and how that joins what was read.

#include "Codes/CodeMerge.h"
#include "Codes/ContactCode.h"
#include "Support/Input.h"
#include "Support/Require.h"

#include <algorithm>

using fuzzing::require;
using namespace qv::recognition;

namespace {

bool isName(FieldType type) {
    return type == FieldType::Name;
}

void checkMerge(const std::vector<CodeField>& code) {
    std::vector<Field> read(2);
    read[0].text = "Jane Doe";
    read[1] = {.type = FieldType::Email, .text = "jane@zq.example", .box = {0, 0, 9, 9}, .confidence = 90};
    const std::vector<Field> all = withCode(read, code, {10, 10, 50, 50});
    const auto isField = [](const Field& field) { return isName(field.type); };
    require(std::count_if(all.begin(), all.end(), isField) <= 1, "at most one field is a name");
    for (const CodeField& field : code) {
        const auto isThere = [&](const Field& other) { return other.text == field.text; };
        require(std::any_of(all.begin(), all.end(), isThere), "what a code says is there");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const std::vector<CodeField> code = contactIn(fuzzing::textOf(bytes, count));
    const auto isCodeName = [](const CodeField& field) { return isName(field.type); };
    require(std::count_if(code.begin(), code.end(), isCodeName) <= 1, "a code has at most one name");
    for (const CodeField& field : code) {
        require(!field.text.empty() && fuzzing::isUTF8(field.text), "a value is text");
        require(std::none_of(field.text.begin(), field.text.end(),
                             [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 0x7F; }),
                "a value has no control characters");
    }
    checkMerge(code);
    return 0;
}
