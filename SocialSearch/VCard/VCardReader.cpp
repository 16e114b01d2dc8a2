#include "VCard/VCardReader.h"

#include "QVSocialSearch/QVVCard.h"
#include "VCard/CharacterSet.h"
#include "VCard/VCardEncoding.h"

namespace {

constexpr std::size_t kMaximumLines = 20000;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool isBlankLine(std::string_view line) {
    return line.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

std::string_view withoutLineEnd(std::string_view line) {
    if (line.ends_with('\n')) line.remove_suffix(1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

std::string_view withoutBlanks(std::string_view text) {
    const std::size_t end = text.find_last_not_of(" \t");
    const std::size_t begin = text.find_first_not_of(" \t");
    return begin == std::string_view::npos ? "" : text.substr(begin, end - begin + 1);
}

bool isFrame(const QVVCardProperty& property, std::string_view name) {
    return property.isNamed(name) && capitals(withoutBlanks(property.value)) == "VCARD";
}

bool beginsWithBlank(std::string_view text) {
    return text.starts_with(' ') || text.starts_with('\t');
}

}  // namespace

bool VCardReader::fail(std::string problem) {
    mProblem = std::move(problem);
    return false;
}

bool VCardReader::read() {
    if (mBytes.size() > QVVCard::kMaximumSize) return fail("it is too large");
    if (mBytes.find('\0') != std::string_view::npos) return fail("it is not a text");
    if (!findVersion()) return false;
    while (mPosition < mBytes.size()) {
        if (!readLine()) return false;
    }
    return checkWhole();
}

/// How lines are folded depends on the version, which may stand in any of them, but always at a line's beginning; a
/// line that a quoted-printable value goes on in may begin with anything.
bool VCardReader::findVersion() {
    findLineEnd();
    while (mPosition < mBytes.size()) {
        const bool isFold = beginsWithBlank(mBytes.substr(mPosition));
        const std::string text = capitals((isFold ? std::string(physicalLine()) : unfoldedLine()).substr(0, 16));
        if (!text.starts_with("VERSION:")) continue;
        const std::string number = text.substr(8, text.find_last_not_of(" \t") - 7);
        if (number != "2.1" && number != "3.0" && number != "4.0") return fail("its version is not known");
        mVersion = number == "2.1" ? QVVCardVersion::V21 : number == "3.0" ? QVVCardVersion::V30 : QVVCardVersion::V40;
        mPosition = 0;
        return true;
    }
    return fail("it is not a card with a version");
}

void VCardReader::findLineEnd() {
    const std::size_t end = mBytes.find('\n');
    if (end != std::string_view::npos) mLineEnd = end > 0 && mBytes[end - 1] == '\r' ? "\r\n" : "\n";
}

/// To the next line's beginning.
std::string_view VCardReader::physicalLine() {
    const std::size_t begin = mPosition;
    const std::size_t end = mBytes.find('\n', begin);
    mPosition = end == std::string_view::npos ? mBytes.size() : end + 1;
    return mBytes.substr(begin, mPosition - begin);
}

void VCardReader::appendFolds(std::string& text) {
    while (beginsWithBlank(mBytes.substr(mPosition))) {
        std::string_view line = withoutLineEnd(physicalLine());
        // In 2.1 a line is broken before a blank that is part of the text.
        if (mVersion != QVVCardVersion::V21) line.remove_prefix(1);
        text += line;
    }
}

/// A line that quoted-printable goes on in may be empty, or end in another "=": only its own end counts.
void VCardReader::appendSoftBreaks(std::string& text) {
    for (std::string_view line = text; line.ends_with('=') && mPosition < mBytes.size();) {
        text.pop_back();
        line = withoutLineEnd(physicalLine());
        text += line;
    }
}

std::string VCardReader::unfoldedLine() {
    std::string text(withoutLineEnd(physicalLine()));
    const std::string head = capitals(text.substr(0, text.find(':')));
    if (head.find("QUOTED-PRINTABLE") != std::string::npos && text.find(':') != std::string::npos) {
        appendSoftBreaks(text);
    }
    return text;
}

std::string VCardReader::logicalLine() {
    std::string text = unfoldedLine();
    appendFolds(text);
    return text;
}

bool VCardReader::readLine() {
    if (mLines.size() == kMaximumLines) return fail("it has too many lines");
    const std::size_t begin = mPosition;
    std::string text = logicalLine();
    if (begin == 0 && text.starts_with(kByteOrderMark)) text.erase(0, kByteOrderMark.size());
    return addLine(begin, text);
}

bool VCardReader::addLine(std::size_t begin, const std::string& text) {
    VCardLine line{.bytes = std::string(mBytes.substr(begin, mPosition - begin)), .property = std::nullopt};
    if (isBlankLine(text)) {
        mLines.push_back(std::move(line));
        return true;
    }
    if (mIsOver) return fail("something follows its end");
    // Only now: others fold in the middle of a character.
    if (mVersion != QVVCardVersion::V21 && !isUTF8(text)) return fail("it is not in UTF-8");
    std::optional<QVVCardProperty> property = QVVCardProperty::propertyWithLine(mVersion, text);
    if (!property) return fail("line " + std::to_string(mLines.size() + 1) + " is not well formed");
    if (isFrame(*property, "BEGIN")) return addFrame(std::move(line), /*isBegin=*/true);
    if (isFrame(*property, "END")) return addFrame(std::move(line), /*isBegin=*/false);
    if (mDepth == 0) return fail("something precedes its beginning");
    if (mDepth == 1) {
        property->decode();
        line.property = std::move(property);
    }
    mLines.push_back(std::move(line));
    return true;
}

bool VCardReader::addFrame(VCardLine line, bool isBegin) {
    if (!isBegin && mDepth == 0) return fail("it ends before it begins");
    mDepth += isBegin ? 1 : -1;
    mIsOver = mDepth == 0;
    mLines.push_back(std::move(line));
    return true;
}

bool VCardReader::checkWhole() {
    if (!mIsOver) return fail("it has no end");
    if (mLineEnd.empty()) mLineEnd = "\r\n";
    return true;
}
