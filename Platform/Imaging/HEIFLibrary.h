#pragma once

#include <cstddef>
#include <cstdint>

namespace qv::imaging {

/// The system's HEIF decoder, libheif, opened when the first HEIF file is met. It is not linked: its usual build brings
/// along an encoder under a licence that this library does not take on, and most machines can do without. The members
/// repeat the declarations of its C interface, which is stable since version 1.3.
class HEIFLibrary {
  public:
    struct Error {
        int code;
        int subcode;
        const char* message;
    };
    struct Context;
    struct Handle;
    struct Image;
    struct Options;
    struct ReadingOptions;

    static constexpr int kColourSpaceRGB = 1;          ///< heif_colorspace_RGB
    static constexpr int kChromaInterleavedRGB = 10;   ///< heif_chroma_interleaved_RGB
    static constexpr int kChromaInterleavedRGBA = 11;  ///< heif_chroma_interleaved_RGBA
    static constexpr int kChannelInterleaved = 10;     ///< heif_channel_interleaved

    /// Null when the system has none. Opened once; stays open, since it keeps threads and plug-ins of its own.
    static const HEIFLibrary* shared();

    Context* (*allocateContext)() = nullptr;
    void (*freeContext)(Context*) = nullptr;
    Error (*readFromMemory)(Context*, const void*, std::size_t, const ReadingOptions*) = nullptr;
    Error (*getPrimaryHandle)(Context*, Handle**) = nullptr;
    void (*releaseHandle)(const Handle*) = nullptr;
    int (*getWidth)(const Handle*) = nullptr;
    int (*getHeight)(const Handle*) = nullptr;
    int (*hasAlpha)(const Handle*) = nullptr;
    Error (*decode)(const Handle*, Image**, int colourSpace, int chroma, const Options*) = nullptr;
    int (*imageWidth)(const Image*, int channel) = nullptr;
    int (*imageHeight)(const Image*, int channel) = nullptr;
    const std::uint8_t* (*getPlane)(const Image*, int channel, int* stride) = nullptr;
    void (*releaseImage)(const Image*) = nullptr;

  private:
    bool load();
};

}  // namespace qv::imaging
