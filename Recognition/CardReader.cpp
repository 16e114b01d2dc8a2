#include "CardReader.h"

#include "Codes/CodeMerge.h"
#include "Codes/CodeReader.h"
#include "Fields/FieldDecision.h"
#include "Picture/CardOutline.h"
#include "Picture/Illumination.h"
#include "Picture/Slant.h"
#include "Result/ResultWriter.h"
#include "Text/Layout.h"
#include "Text/SurestLines.h"
#include "Text/WordMerge.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <utility>

namespace qv::recognition {
namespace {

constexpr int kReadingSide = 1600;  // the engine reads type of 20 to 40 pixels best: what a card of this size has
constexpr std::size_t kMostEngines = 3;
constexpr const char* kEnglish = "eng";
constexpr const char* kVerticalJapanese = "jpn_vert";
constexpr int kFewLetters = 60;
constexpr double kLevel = 1;  // degrees of slant that the engine copes with

class StageClock {
  public:
    explicit StageClock(Recognition& report) : mReport(report), mStart(std::chrono::steady_clock::now()) {}

    void done(const char* stage) {
        const auto now = std::chrono::steady_clock::now();
        mReport.stages.push_back(
            {stage, std::chrono::duration_cast<std::chrono::microseconds>(now - std::exchange(mStart, now))});
    }

  private:
    Recognition& mReport;
    std::chrono::steady_clock::time_point mStart;
};

cv::Mat greyOf(const cv::Mat& colour) {
    cv::Mat grey;
    cv::cvtColor(colour, grey, cv::COLOR_BGR2GRAY);
    return grey;
}

Unwarped enlarged(const cv::Mat& picture) {
    const double factor = static_cast<double>(kReadingSide) / std::max(picture.cols, picture.rows);
    const cv::Size size(std::max(1, cvRound(picture.cols * factor)), std::max(1, cvRound(picture.rows * factor)));
    Unwarped result;
    cv::resize(picture, result.picture, size, 0, 0, factor < 1 ? cv::INTER_AREA : cv::INTER_CUBIC);
    result.toSource = PlaneMap::scaledBy(static_cast<double>(size.width) / picture.cols,
                                         static_cast<double>(size.height) / picture.rows);
    return result;
}

/// The whole picture with its lines of text made level.
Unwarped levelPicture(const cv::Mat& colour) {
    Unwarped whole = enlarged(colour);
    const double slant = textSlant(evenLight(greyOf(whole.picture)));
    if (std::abs(slant) < kLevel) return whole;
    const Unwarped level = straightened(whole.picture, slant);
    return {level.picture, whole.toSource.after(level.toSource)};
}

/// A picture of a card in the forms that are read.
struct Sheet {
    explicit Sheet(Unwarped picture) : card(std::move(picture)), grey(greyOf(card.picture)), even(evenLight(grey)) {}

    Unwarped card;
    cv::Mat grey;
    cv::Mat even;
};

/// How often fields of this estimate were right when about 1200 of them were measured: far more often than the product
/// of two doubts says. Straight lines between measured points.
float calibrated(float estimate) {
    static constexpr std::pair<float, float> points[] = {
        {0.F, 0.3F}, {0.2F, 0.66F}, {0.5F, 0.82F}, {0.7F, 0.92F}, {1.F, 0.99F}};
    for (std::size_t i = 1; i < std::size(points); ++i) {
        const auto [x0, y0] = points[i - 1];
        const auto [x1, y1] = points[i];
        if (estimate <= x1) return y0 + (y1 - y0) * (estimate - x0) / (x1 - x0);
    }
    return points[std::size(points) - 1].second;
}

/// The chance that a field is right: what kind it is must be right, and every letter of it.
int weightOf(const Field& field) {
    if (field.isSure) return 100;
    const float read = std::clamp((field.confidence - 20) / 75, 0.05F, 1.F);
    return std::clamp(static_cast<int>(std::lround(100 * calibrated(field.likelihood * read))), 1, 99);
}

Result resultOf(const std::vector<Field>& fields, const SentPicture& sent, const ReadingLanguage& language,
                int orient) {
    Result result{language.code, sent.width, sent.height, orient, {}};
    for (const auto& field : fields)
        result.items.push_back({nameOf(field.type), field.text, field.box, weightOf(field)});
    return result;
}

/// From the picture as it was decoded to the picture as it was sent.
PlaneMap toSentSize(const SentPicture& sent) {
    return PlaneMap::scaledBy(static_cast<double>(sent.colour.cols) / sent.width,
                              static_cast<double>(sent.colour.rows) / sent.height);
}

/// The first code that holds a contact counts: two of them would be two people's.
std::vector<Field> withCodes(std::vector<Field> fields, const std::vector<Code>& codes, const SentPicture& sent) {
    for (const auto& code : codes) {
        const auto said = contactIn(code.text);
        if (!said.empty()) return withCode(std::move(fields), said, toSentSize(sent).map(code.box()));
    }
    return fields;
}

}  // namespace

std::unique_ptr<CardReader> CardReader::open(Options options) {
    std::unique_ptr<CardReader> reader(new CardReader(std::move(options)));
    return reader->engineFor({"en", kEnglish, false}) == nullptr ? nullptr : std::move(reader);
}

Engine* CardReader::engineFor(const ReadingLanguage& language) {
    const auto loaded = std::find_if(mEngines.begin(), mEngines.end(),
                                     [&](const auto& entry) { return entry.models == language.models; });
    if (loaded != mEngines.end()) {
        std::rotate(mEngines.begin(), loaded, loaded + 1);
        return mEngines.front().engine.get();
    }
    auto engine = Engine::open(mOptions.models, language.models);
    if (!engine) return nullptr;
    if (mEngines.size() >= kMostEngines) mEngines.pop_back();
    mEngines.insert(mEngines.begin(), {language.models, std::move(engine)});
    return mEngines.front().engine.get();
}

Recognition CardReader::recognise(std::span<const std::uint8_t> jpeg, const std::string& contentLanguage) {
    Recognition report;
    StageClock clock(report);
    const Deadline deadline = Deadline::in(mOptions.timeLimit);
    report.keptAs = mDebug.nextCard();
    mDebug.keep("request", jpeg);
    auto sent = decodeJPEG(jpeg);
    clock.done("decode");
    if (!sent) return report;
    report.isPicture = true;
    ReadingLanguage language = readingLanguage(contentLanguage, mOptions.models);
    Engine* engine = engineFor(language);
    if (engine == nullptr) {
        language = {"en", kEnglish, true};
        engine = engineFor(language);
    }
    if (language.isFallback) report.remark = "the language asked for is not installed, reading English";
    int orient = 0;
    const auto fields =
        engine == nullptr ? std::vector<Field>() : fieldsOf(*sent, *engine, language, deadline, report, orient);
    report.fields = static_cast<int>(fields.size());
    report.isCutShort = deadline.passed();
    report.xml = writeResult(resultOf(fields, *sent, language, orient));
    mDebug.keep("answer", report);
    return report;
}

/// Opening an engine takes less than a tenth of a second, and happens once in three cards. Where it fails, for want of
/// memory or descriptors, the old one goes on.
void CardReader::rest() {
    for (auto& [models, engine] : mEngines) {
        if (!engine->isStretched()) continue;
        if (auto fresh = Engine::open(mOptions.models, models)) engine = std::move(fresh);
    }
}

std::vector<Field> CardReader::fieldsOf(SentPicture& sent, Engine& engine, const ReadingLanguage& language,
                                        Deadline deadline, Recognition& report, int& orient) {
    StageClock clock(report);
    mDebug.keep("sent", sent.colour);
    const cv::Mat grey = greyOf(sent.colour);
    if (!hasDetail(grey)) return {};
    const auto codes = readCodes(grey);
    eraseCodes(sent.colour, codes);
    clock.done("code");
    return withCodes(printOf(sent, engine, language, deadline, report, orient), codes, sent);
}

std::vector<Field> CardReader::printOf(const SentPicture& sent, Engine& engine, const ReadingLanguage& language,
                                       Deadline deadline, Recognition& report, int& orient) {
    StageClock clock(report);
    const auto outline = findOutline(sent.colour);
    Sheet sheet(outline ? unwarp(sent.colour, *outline, kReadingSide) : levelPicture(sent.colour));
    clock.done("card");
    Reading reading = readUpright(engine, sheet.even, deadline);
    // What was cut out may be one panel of the card, with the other on ground of its own colour.
    if (outline && plainLetters(reading.words) < kFewLetters) {
        Sheet whole(levelPicture(sent.colour));
        Reading other = readUpright(engine, whole.even, deadline);
        if (plainLetters(other.words) * 2 > plainLetters(reading.words) * 3) {
            sheet = std::move(whole);
            reading = std::move(other);
        }
    }
    mDebug.keep("card", sheet.card.picture);
    mDebug.keep("even", sheet.even);
    const bool noCard = isNoCard(reading.words);
    const bool vertical = !noCard && readVertically(reading, sheet.even, language, deadline);
    orient = vertical ? 0 : reading.orient;
    clock.done("read");
    if (noCard) return {};
    if (!vertical) {
        const cv::Mat upright = turned(sheet.grey, orient);
        Engine* second = language.models == kEnglish ? &engine : engineFor({"en", kEnglish, false});
        // English may have had to go for other languages, and opening it again may fail.
        if (second == nullptr) second = &engine;
        reading.words = merged(std::move(reading.words), second->read(upright, PageMode::Sparse, deadline),
                               second == &engine ? 6 : 20);
        clock.done("again");
        reading.words =
            merged(std::move(reading.words), engine.read(turned(sheet.even, orient), PageMode::Page, deadline));
        clock.done("page");
    }

    mDebug.keep("words", reading.words);
    const auto lines = surestLines(arrange(std::move(reading.words)));
    mDebug.keep("lines", lines);
    auto fields = decideFields(lines, language.code);
    mDebug.keep("fields", fields);
    const PlaneMap toSent = toSentSize(sent)
                                .after(sheet.card.toSource)
                                .after(PlaneMap::turnedBy(reading.orient, sheet.grey.cols, sheet.grey.rows));
    for (auto& field : fields)
        field.box = toSent.map(field.box);
    clock.done("fields");
    return fields;
}

/// Lines from top to bottom make no sense to an engine that reads across; its sister reads them, in a card that stands
/// upright.
bool CardReader::readVertically(Reading& reading, const cv::Mat& even, const ReadingLanguage& language,
                                Deadline deadline) {
    if (language.code != "ja" || isPlain(reading.words) || !isInstalled(mOptions.models, kVerticalJapanese))
        return false;
    Engine* engine = engineFor({language.code, kVerticalJapanese, false});
    if (engine == nullptr) return false;
    auto words = engine->read(even, PageMode::Page, deadline);
    if (plainLetters(words) <= plainLetters(reading.words)) return false;
    reading = {270, laidLevel(std::move(words), even.cols)};
    return true;
}

}  // namespace qv::recognition
