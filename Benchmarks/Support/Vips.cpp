#include "Support/Vips.h"

#include <vips/vips.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace benchmarksupport::vips {

namespace {

struct Unref {
    void operator()(VipsImage* image) const { g_object_unref(image); }
};
using Image = std::unique_ptr<VipsImage, Unref>;

void check(int status) {
    if (status == 0) return;
    const std::string message = vips_error_buffer();
    vips_error_clear();
    throw std::runtime_error("libvips: " + message);
}

constexpr int kBox = 1024;
constexpr int kQuality = 70;

}  // namespace

void start() {
    if (VIPS_INIT("benchmark") != 0) throw std::runtime_error("libvips does not start");
    vips_concurrency_set(1);
    vips_cache_set_max(0);
}

qv::Data prepare(const qv::Data& encoded) {
    VipsImage* small = nullptr;
    // The library takes the bytes as changeable, and leaves them as they are.
    check(vips_thumbnail_buffer(const_cast<std::uint8_t*>(encoded.data()), encoded.size(), &small, kBox, "height", kBox,
                                nullptr));
    const Image owned(small);
    const double white[] = {255};
    const std::unique_ptr<VipsArrayDouble, void (*)(VipsArrayDouble*)> background(
        vips_array_double_new(white, 1), [](VipsArrayDouble* array) { vips_area_unref(VIPS_AREA(array)); });
    void* bytes = nullptr;
    std::size_t count = 0;
    check(vips_jpegsave_buffer(small, &bytes, &count, "Q", kQuality, "background", background.get(), nullptr));
    const auto* first = static_cast<const std::uint8_t*>(bytes);
    qv::Data result(first, first + count);
    g_free(bytes);
    return result;
}

testsupport::Pixels decode(const qv::Data& encoded) {
    const Image file(vips_image_new_from_buffer(encoded.data(), encoded.size(), "", nullptr));
    if (!file) check(-1);
    VipsImage* next = nullptr;
    check(vips_autorot(file.get(), &next, nullptr));
    const Image upright(next);
    check(vips_colourspace(upright.get(), &next, VIPS_INTERPRETATION_sRGB, nullptr));
    const Image coloured(next);
    const int bands = vips_image_get_bands(coloured.get());
    std::size_t count = 0;
    const std::unique_ptr<std::uint8_t, void (*)(void*)> memory(
        static_cast<std::uint8_t*>(vips_image_write_to_memory(coloured.get(), &count)), g_free);
    if (!memory) check(-1);
    testsupport::Pixels pixels(vips_image_get_width(coloured.get()), vips_image_get_height(coloured.get()));
    const std::uint8_t* from = memory.get();
    for (std::size_t index = 0; index < pixels.rgba.size(); index += 4, from += bands) {
        for (int channel = 0; channel < std::min(bands, 4); ++channel)
            pixels.rgba[index + static_cast<std::size_t>(channel)] = from[channel];
    }
    return pixels;
}

}  // namespace benchmarksupport::vips
