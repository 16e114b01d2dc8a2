#include "Support/TestImages.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace testsupport {

namespace {

struct Error {
    int code;
    int subcode;
    const char* message;
};
struct Writer {
    int version;
    Error (*write)(void* context, const void* data, std::size_t size, void* user);
};

Error append(void*, const void* data, std::size_t size, void* user) {
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    static_cast<qv::Data*>(user)->assign(bytes, bytes + size);
    return {0, 0, "ok"};
}

/// Calls a function of the library by its name.
template <typename Result, typename... Arguments>
Result call(void* library, const char* name, Arguments... arguments) {
    return reinterpret_cast<Result (*)(Arguments...)>(dlsym(library, name))(arguments...);
}

constexpr int kHEVC = 1;
constexpr int kRGB = 1;
constexpr int kInterleavedRGB = 10;
constexpr int kInterleaved = 10;

void* interleavedImage(void* library, const Pixels& pixels) {
    void* image = nullptr;
    call<Error>(library, "heif_image_create", pixels.width, pixels.height, kRGB, kInterleavedRGB, &image);
    call<Error>(library, "heif_image_add_plane", image, kInterleaved, pixels.width, pixels.height, 8);
    int stride = 0;
    auto* rows = call<std::uint8_t*>(library, "heif_image_get_plane", image, kInterleaved, &stride);
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x)
            std::copy_n(pixels.at(x, y), 3, rows + y * stride + x * 3);
    }
    return image;
}

}  // namespace

std::optional<qv::Data> makeHEIC(const Pixels& pixels) {
    void* library = dlopen("libheif.so.1", RTLD_NOW | RTLD_LOCAL);
    if (!library) return std::nullopt;
    void* context = call<void*>(library, "heif_context_alloc");
    void* encoder = nullptr;
    if (call<Error>(library, "heif_context_get_encoder_for_format", context, kHEVC, &encoder).code != 0) {
        call<void>(library, "heif_context_free", context);
        return std::nullopt;
    }
    call<Error>(library, "heif_encoder_set_lossy_quality", encoder, 90);
    void* image = interleavedImage(library, pixels);
    void* none = nullptr;
    const Error status = call<Error>(library, "heif_context_encode_image", context, image, encoder, none, none);
    EXPECT_EQ(status.code, 0) << status.message;
    qv::Data data;
    Writer writer{1, append};
    call<Error>(library, "heif_context_write", context, &writer, static_cast<void*>(&data));
    call<void>(library, "heif_image_release", image);
    call<void>(library, "heif_encoder_release", encoder);
    call<void>(library, "heif_context_free", context);
    return data;
}

}  // namespace testsupport
