#include "DebugFolder.h"

#include <opencv2/imgproc.hpp>

#include <array>
#include <fstream>
#include <ostream>

namespace qv::recognition {
namespace {

std::ostream& operator<<(std::ostream& out, const Box& box) {
    return out << static_cast<int>(box.x) << '\t' << static_cast<int>(box.y) << '\t' << static_cast<int>(box.w) << '\t'
               << static_cast<int>(box.h);
}

}  // namespace

std::string_view nameOf(FieldType type) {
    static constexpr std::array<std::string_view, 12> names = {"name",    "email",      "phone",   "title",
                                                               "company", "department", "url",     "address",
                                                               "fax",     "mobile",     "twitter", "skype"};
    return names[static_cast<std::size_t>(type)];
}

void DebugFolder::nextCard() {
    if (mFolder.empty()) return;
    std::error_code ignored;
    std::filesystem::create_directories(mFolder, ignored);
    do {
        ++mNumber;
    } while (std::filesystem::exists(fileFor("sent", ".ppm"), ignored));
}

std::filesystem::path DebugFolder::fileFor(const std::string& stage, const std::string& ending) const {
    const std::string number = std::to_string(mNumber);
    return mFolder / (std::string(number.size() < 4 ? 4 - number.size() : 0, '0') + number + '-' + stage + ending);
}

void DebugFolder::keep(const std::string& stage, const cv::Mat& picture) const {
    if (mFolder.empty() || picture.empty()) return;
    const bool isColour = picture.channels() == 3;
    cv::Mat pixels;
    if (isColour) {
        cv::cvtColor(picture, pixels, cv::COLOR_BGR2RGB);
    } else {
        pixels = picture;
    }
    std::ofstream file(fileFor(stage, isColour ? ".ppm" : ".pgm"), std::ios::binary);
    file << (isColour ? "P6\n" : "P5\n") << pixels.cols << ' ' << pixels.rows << "\n255\n";
    for (int y = 0; y < pixels.rows; ++y) {
        file.write(reinterpret_cast<const char*>(pixels.ptr(y)),
                   static_cast<std::streamsize>(pixels.cols) * pixels.channels());
    }
}

void DebugFolder::keep(const std::string& stage, const std::vector<Word>& words) const {
    if (mFolder.empty()) return;
    std::ofstream file(fileFor(stage, ".tsv"));
    for (const auto& word : words)
        file << static_cast<int>(word.confidence) << '\t' << word.box << '\t' << word.text << '\n';
}

void DebugFolder::keep(const std::string& stage, const std::vector<TextLine>& lines) const {
    if (mFolder.empty()) return;
    std::ofstream file(fileFor(stage, ".tsv"));
    for (const auto& line : lines) {
        file << static_cast<int>(line.confidence()) << '\t' << static_cast<int>(line.size) << '\t' << line.box << '\t'
             << line.text() << '\n';
    }
}

void DebugFolder::keep(const std::string& stage, const std::vector<Field>& fields) const {
    if (mFolder.empty()) return;
    std::ofstream file(fileFor(stage, ".tsv"));
    for (const auto& field : fields) {
        file << nameOf(field.type) << '\t' << field.likelihood << '\t' << static_cast<int>(field.confidence) << '\t'
             << field.box << '\t' << field.text << '\n';
    }
}

}  // namespace qv::recognition
