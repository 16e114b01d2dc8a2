#include "Support/Inputs.h"

#include "Support/Photograph.h"
#include "Support/TestImages.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace benchmarksupport {

using testsupport::JPEGOptions;
using testsupport::PNGOptions;

namespace {

struct Side {
    int width;
    int height;
};
constexpr Side k2MP{1632, 1224};
constexpr Side k12MP{4000, 3000};
constexpr Side k48MP{8000, 6000};
constexpr Side kSmall{500, 300};

constexpr int kPhoneQuality = 92;

/// Sampling as in "4:2:0": chroma shared by so many columns and rows.
std::function<qv::Data()> jpeg(Side side, int columns, int rows, JPEGOptions options = {}) {
    options.horizontalSampling = columns;
    options.verticalSampling = rows;
    options.quality = kPhoneQuality;
    return [=] { return makeJPEG(photographOfCard(side.width, side.height), options); };
}

std::function<qv::Data()> png(Side side, PNGOptions::Kind kind) {
    return [=] {
        const bool hasAlpha = kind == PNGOptions::Kind::RGBA;
        const auto pixels = hasAlpha ? cutOutCard(side.width, side.height) : photographOfCard(side.width, side.height);
        return makePNG(pixels, {.kind = kind});
    };
}

std::function<qv::Data()> webp(Side side) {
    return [=] { return makeWebP(photographOfCard(side.width, side.height), {.isLossless = false}); };
}

std::function<testsupport::Pixels()> picture(Side side) {
    return [=] { return photographOfCard(side.width, side.height); };
}

std::vector<Input> listOfInputs() {
    using Colours = JPEGOptions::Colours;
    using Kind = PNGOptions::Kind;
    return {
        {"JPEG 4:2:0, 12 MP", "jpeg-420-12.jpg", jpeg(k12MP, 2, 2), 2.5, 1.12},
        {"JPEG 4:2:0, 2 MP", "jpeg-420-2.jpg", jpeg(k2MP, 2, 2), 3, 1.5},
        {"JPEG 4:2:0, 48 MP", "jpeg-420-48.jpg", jpeg(k48MP, 2, 2), 1.7, 1.12},
        {"JPEG 4:2:2, 12 MP", "jpeg-422-12.jpg", jpeg(k12MP, 2, 1)},
        {"JPEG 4:4:4, 12 MP", "jpeg-444-12.jpg", jpeg(k12MP, 1, 1)},
        {"JPEG progressive, 12 MP", "jpeg-progressive-12.jpg", jpeg(k12MP, 2, 2, {.isProgressive = true})},
        {"JPEG turned (EXIF 6), 12 MP", "jpeg-exif6-12.jpg", jpeg(k12MP, 2, 2, {.orientation = 6})},
        {"JPEG grey, 12 MP", "jpeg-grey-12.jpg", jpeg(k12MP, 1, 1, {.colours = Colours::Grey})},
        {"JPEG CMYK, 12 MP", "jpeg-cmyk-12.jpg", jpeg(k12MP, 1, 1, {.colours = Colours::CMYK}), 1, 0, picture(k12MP)},
        {"JPEG 4:2:2, 2 MP", "jpeg-422-2.jpg", jpeg(k2MP, 2, 1)},
        {"JPEG 4:4:4, 2 MP", "jpeg-444-2.jpg", jpeg(k2MP, 1, 1)},
        {"JPEG progressive, 2 MP", "jpeg-progressive-2.jpg", jpeg(k2MP, 2, 2, {.isProgressive = true})},
        {"JPEG turned (EXIF 8), 48 MP", "jpeg-exif8-48.jpg", jpeg(k48MP, 2, 2, {.orientation = 8})},
        {"JPEG 500 x 300, enlarged", "jpeg-500x300.jpg", jpeg(kSmall, 2, 2)},
        {"PNG, 12 MP", "png-12.png", png(k12MP, Kind::RGB)},
        {"PNG with alpha, 12 MP", "png-alpha-12.png", png(k12MP, Kind::RGBA)},
        {"PNG, 2 MP", "png-2.png", png(k2MP, Kind::RGB)},
        {"PNG with alpha, 2 MP", "png-alpha-2.png", png(k2MP, Kind::RGBA)},
        {"PNG 500 x 300, enlarged", "png-500x300.png", png(kSmall, Kind::RGB)},
        {"WebP, 12 MP", "webp-12.webp", webp(k12MP)},
        {"WebP, 2 MP", "webp-2.webp", webp(k2MP)},
    };
}

qv::Data readFile(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return qv::Data(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

}  // namespace

const std::vector<Input>& inputs() {
    static const std::vector<Input> list = listOfInputs();
    return list;
}

std::filesystem::path inputFolder() {
    const char* folder = std::getenv("QV_BENCHMARK_INPUTS");
    return folder ? std::filesystem::path(folder) : std::filesystem::temp_directory_path() / "qv-benchmark-inputs";
}

std::filesystem::path pathOfInput(const Input& input) {
    std::filesystem::path path = inputFolder() / input.file;
    if (std::filesystem::exists(path)) return path;
    std::filesystem::create_directories(inputFolder());
    // Under another name first: a file that is there is whole.
    const std::filesystem::path unfinished = path.string() + ".part";
    const qv::Data data = input.make();
    std::ofstream stream(unfinished, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(data.data()), static_cast<std::streamsize>(data.size()));
    stream.close();
    if (!stream) throw std::runtime_error("cannot write " + unfinished.string());
    std::filesystem::rename(unfinished, path);
    return path;
}

qv::Data readInput(const Input& input) {
    return readFile(pathOfInput(input));
}

}  // namespace benchmarksupport
