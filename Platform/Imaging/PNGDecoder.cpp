#include "PNGDecoder.h"

#include <png.h>

#include <cstring>
#include <vector>

namespace qv::imaging {

namespace {

[[noreturn]] void leave(png_structp codec, png_const_charp) {
    png_longjmp(codec, 1);
}

void ignoreMessage(png_structp, png_const_charp) {
}

/// One pass over the bytes. The steps that the library may leave by longjmp are functions of their own, without
/// anything that has a destructor.
class PNGReader {
  public:
    explicit PNGReader(const Data& data)
        : mCodec(png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, leave, ignoreMessage)),
          mNext(data.data()),
          mEnd(data.data() + data.size()) {
        if (mCodec) mInfo = png_create_info_struct(mCodec);
    }
    ~PNGReader() { png_destroy_read_struct(&mCodec, &mInfo, nullptr); }
    PNGReader(const PNGReader&) = delete;
    PNGReader& operator=(const PNGReader&) = delete;

    bool readHeader() {
        if (!mInfo || setjmp(png_jmpbuf(mCodec)) != 0) return false;
        png_set_user_limits(mCodec, kMaxSide, kMaxSide);
        png_set_chunk_cache_max(mCodec, 1000);
        png_set_chunk_malloc_max(mCodec, 8'000'000);
        // Each chunk has a checksum of its own; a second one over the same bytes finds nothing more.
        png_set_option(mCodec, PNG_IGNORE_ADLER32, PNG_OPTION_ON);
        png_set_read_fn(mCodec, this, read);
        png_read_info(mCodec, mInfo);
        return true;
    }
    bool setTransformations() {
        if (setjmp(png_jmpbuf(mCodec)) != 0) return false;
        png_set_expand(mCodec);
        png_set_scale_16(mCodec);
        png_set_gray_to_rgb(mCodec);
        mPasses = png_set_interlace_handling(mCodec);
        png_read_update_info(mCodec, mInfo);
        return true;
    }
    /// Reads the next row, or refines it in a later pass.
    bool readRow(png_bytep row) {
        if (setjmp(png_jmpbuf(mCodec)) != 0) return false;
        png_read_row(mCodec, row, nullptr);
        return true;
    }

    PixelSize size() const {
        return {static_cast<int>(png_get_image_width(mCodec, mInfo)),
                static_cast<int>(png_get_image_height(mCodec, mInfo))};
    }
    Orientation orientation() const {
        png_bytep bytes = nullptr;
        png_uint_32 count = 0;
        if (png_get_eXIf_1(mCodec, mInfo, &count, &bytes) == 0) return {};
        return Orientation::fromExif(bytes, count);
    }
    bool hasAlpha() const { return png_get_channels(mCodec, mInfo) == 4; }
    bool isInterlaced() const { return mPasses > 1; }
    int passes() const { return mPasses; }

  private:
    static void read(png_structp codec, png_bytep out, std::size_t count) {
        auto* reader = static_cast<PNGReader*>(png_get_io_ptr(codec));
        if (static_cast<std::size_t>(reader->mEnd - reader->mNext) < count) png_error(codec, "end");
        std::memcpy(out, reader->mNext, count);
        reader->mNext += count;
    }

    png_structp mCodec;
    png_infop mInfo = nullptr;
    const std::uint8_t* mNext;
    const std::uint8_t* mEnd;
    int mPasses = 1;
};

bool readInOrder(PNGReader& reader, Picture& picture) {
    std::vector<std::uint8_t> row(static_cast<std::size_t>(picture.size().width) * picture.planeCount());
    for (int y = 0; y < picture.size().height; ++y) {
        if (!reader.readRow(row.data())) return false;
        picture.setRow(y, row.data());
    }
    return true;
}

// A later pass completes what the earlier ones left in the row.
bool readInterlaced(PNGReader& reader, Picture& picture) {
    std::vector<std::uint8_t> row(static_cast<std::size_t>(picture.size().width) * picture.planeCount());
    for (int pass = 0; pass < reader.passes(); ++pass) {
        for (int y = 0; y < picture.size().height; ++y) {
            if (pass > 0) picture.getRow(y, row.data());
            if (!reader.readRow(row.data())) return false;
            picture.setRow(y, row.data());
        }
    }
    return true;
}

}  // namespace

std::unique_ptr<const ImageDecoder> PNGDecoder::create(const Data& data) {
    PNGReader reader(data);
    if (!reader.readHeader()) return nullptr;
    const PixelSize size = reader.size();
    if (!isWithin(size.width, size.height, kMaxBufferedPixels)) return nullptr;
    return std::unique_ptr<const ImageDecoder>(new PNGDecoder(data, {size, reader.orientation()}));
}

std::optional<Picture> PNGDecoder::decode(PixelSize) const {
    PNGReader reader(data());
    if (!reader.readHeader() || !reader.setTransformations()) return std::nullopt;
    Picture picture({reader.hasAlpha() ? ColourModel::RGBA : ColourModel::RGB, header().size, k444});
    const bool isRead = reader.isInterlaced() ? readInterlaced(reader, picture) : readInOrder(reader, picture);
    if (!isRead) return std::nullopt;
    return picture;
}

}  // namespace qv::imaging
