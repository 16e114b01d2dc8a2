#include "DebugFolder.h"

#include <opencv2/imgproc.hpp>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <ostream>
#include <system_error>

namespace qv::recognition {
namespace {

std::ostream& operator<<(std::ostream& out, const Box& box) {
    return out << static_cast<int>(box.x) << '\t' << static_cast<int>(box.y) << '\t' << static_cast<int>(box.w) << '\t'
               << static_cast<int>(box.h);
}

std::string digits(int number, std::size_t least) {
    const std::string text = std::to_string(number);
    return std::string(text.size() < least ? least - text.size() : 0, '0') + text;
}

}  // namespace

std::string_view nameOf(FieldType type) {
    static constexpr std::array<std::string_view, 12> names = {"name",    "email",      "phone",   "title",
                                                               "company", "department", "url",     "address",
                                                               "fax",     "mobile",     "twitter", "skype"};
    return names[static_cast<std::size_t>(type)];
}

std::string DebugFolder::nextCard() {
    mFiles = 0;
    mCard.clear();
    if (mFolder.empty()) return {};
    std::error_code ignored;
    std::filesystem::create_directories(mFolder, ignored);
    // Who makes the folder has the number: other workers, and other servers, look for one at the same time.
    std::filesystem::path card;
    int made = 0;
    do {
        card = mFolder / digits(++mNumber, 4);
        made = ::mkdir(card.c_str(), S_IRWXU);
    } while (made != 0 && errno == EEXIST);
    if (made != 0) return {};
    mCard = card;
    return card.filename().string();
}

std::ofstream DebugFolder::fileFor(const std::string& stage, const std::string& ending) {
    return std::ofstream(mCard / (digits(++mFiles, 2) + '-' + stage + ending), std::ios::binary);
}

void DebugFolder::keep(const std::string& stage, std::span<const std::uint8_t> jpeg) {
    if (!isKeeping()) return;
    std::ofstream file = fileFor(stage, ".jpg");
    file.write(reinterpret_cast<const char*>(jpeg.data()), static_cast<std::streamsize>(jpeg.size()));
}

void DebugFolder::keep(const std::string& stage, const cv::Mat& picture) {
    if (!isKeeping() || picture.empty()) return;
    const bool isColour = picture.channels() == 3;
    cv::Mat pixels;
    if (isColour) {
        cv::cvtColor(picture, pixels, cv::COLOR_BGR2RGB);
    } else {
        pixels = picture;
    }
    std::ofstream file = fileFor(stage, isColour ? ".ppm" : ".pgm");
    file << (isColour ? "P6\n" : "P5\n") << pixels.cols << ' ' << pixels.rows << "\n255\n";
    for (int y = 0; y < pixels.rows; ++y) {
        file.write(reinterpret_cast<const char*>(pixels.ptr(y)),
                   static_cast<std::streamsize>(pixels.cols) * pixels.channels());
    }
}

void DebugFolder::keep(const std::string& stage, const std::vector<Word>& words) {
    if (!isKeeping()) return;
    std::ofstream file = fileFor(stage, ".tsv");
    for (const auto& word : words)
        file << static_cast<int>(word.confidence) << '\t' << word.box << '\t' << word.text << '\n';
}

void DebugFolder::keep(const std::string& stage, const std::vector<TextLine>& lines) {
    if (!isKeeping()) return;
    std::ofstream file = fileFor(stage, ".tsv");
    for (const auto& line : lines) {
        file << static_cast<int>(line.confidence()) << '\t' << static_cast<int>(line.size) << '\t' << line.box << '\t'
             << line.text() << '\n';
    }
}

void DebugFolder::keep(const std::string& stage, const std::vector<Field>& fields) {
    if (!isKeeping()) return;
    std::ofstream file = fileFor(stage, ".tsv");
    for (const auto& field : fields) {
        file << nameOf(field.type) << '\t' << field.likelihood << '\t' << static_cast<int>(field.confidence) << '\t'
             << field.box << '\t' << field.text << '\n';
    }
}

void DebugFolder::keep(const std::string& stage, const Recognition& recognition) {
    if (!isKeeping()) return;
    fileFor(stage, ".xml") << recognition.xml << '\n';
    std::ofstream file = fileFor("times", ".tsv");
    for (const auto& entry : recognition.stages)
        file << entry.stage << '\t' << entry.time.count() << " us\n";
    if (recognition.isCutShort) file << "cut short\n";
}

}  // namespace qv::recognition
