#include "ColourMath.h"
#include "ImageEncoder.h"

#include <png.h>

#include <new>
#include <utility>

namespace qv::imaging {

namespace {

[[noreturn]] void leave(png_structp codec, png_const_charp) {
    png_longjmp(codec, 1);
}

void ignoreMessage(png_structp, png_const_charp) {
}

int colourTypeOf(ColourModel model) {
    if (model == ColourModel::Grey) return PNG_COLOR_TYPE_GRAY;
    return model == ColourModel::RGBA ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB;
}

/// Writes one file. As in the decoder, what the library may leave by longjmp holds nothing that has a destructor.
class PNGWriter {
  public:
    PNGWriter() : mCodec(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, leave, ignoreMessage)) {
        if (mCodec) mInfo = png_create_info_struct(mCodec);
    }
    ~PNGWriter() { png_destroy_write_struct(&mCodec, &mInfo); }
    PNGWriter(const PNGWriter&) = delete;
    PNGWriter& operator=(const PNGWriter&) = delete;

    bool writeHeader(PixelSize size, ColourModel model) {
        if (!mInfo || setjmp(png_jmpbuf(mCodec)) != 0) return false;
        png_set_write_fn(mCodec, this, write, nullptr);
        png_set_IHDR(mCodec, mInfo, static_cast<png_uint_32>(size.width), static_cast<png_uint_32>(size.height), 8,
                     colourTypeOf(model), PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_write_info(mCodec, mInfo);
        return true;
    }
    bool writeRow(png_const_bytep row) {
        if (setjmp(png_jmpbuf(mCodec)) != 0) return false;
        png_write_row(mCodec, row);
        return true;
    }
    bool writeEnd() {
        if (setjmp(png_jmpbuf(mCodec)) != 0) return false;
        png_write_end(mCodec, nullptr);
        return true;
    }
    Data& written() { return mWritten; }

  private:
    bool append(png_const_bytep bytes, std::size_t count) try {
        mWritten.insert(mWritten.end(), bytes, bytes + count);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
    static void write(png_structp codec, png_bytep bytes, std::size_t count) {
        if (!static_cast<PNGWriter*>(png_get_io_ptr(codec))->append(bytes, count)) png_error(codec, "memory");
    }

    png_structp mCodec;
    png_infop mInfo = nullptr;
    Data mWritten;
};

bool writePicture(PNGWriter& writer, const Picture& picture) {
    Data row(static_cast<std::size_t>(picture.size().width) * picture.planeCount());
    if (!writer.writeHeader(picture.size(), picture.model())) return false;
    for (int y = 0; y < picture.size().height; ++y) {
        picture.getRow(y, row.data());
        if (!writer.writeRow(row.data())) return false;
    }
    return writer.writeEnd();
}

}  // namespace

std::optional<Data> encodePNG(Picture picture) {
    if (picture.model() == ColourModel::YCbCr) picture = convertedToRGB(std::move(picture));
    PNGWriter writer;
    if (!writePicture(writer, picture)) return std::nullopt;
    return std::move(writer.written());
}

}  // namespace qv::imaging
