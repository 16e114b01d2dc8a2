#pragma once

#include "QVPlatform/Data.h"

#include <tiffio.h>

#include <cstdint>
#include <memory>

namespace qv::imaging {

/// A TIFF "file" in memory, for reading foreign bytes or for writing new ones. The library's messages are dropped, and
/// it may not take more than a fixed amount of memory at once.
class TIFFMemory {
  public:
    /// Reads `data`, which must outlive this.
    static std::unique_ptr<TIFFMemory> reading(const Data& data);
    /// Writes; the bytes are in `written()` after `close()`.
    static std::unique_ptr<TIFFMemory> writing();

    ~TIFFMemory() { close(); }
    TIFFMemory(const TIFFMemory&) = delete;
    TIFFMemory& operator=(const TIFFMemory&) = delete;

    TIFF* handle() const { return mHandle; }
    void close();
    Data& written() { return mWritten; }

  private:
    explicit TIFFMemory(const Data* source) : mSource(source) {}
    bool open(const char* mode);
    const Data& bytes() const { return mSource ? *mSource : mWritten; }

    static tmsize_t read(thandle_t self, void* out, tmsize_t count);
    static tmsize_t write(thandle_t self, void* in, tmsize_t count);
    static toff_t seek(thandle_t self, toff_t offset, int from);
    static int leaveOpen(thandle_t self);
    static toff_t size(thandle_t self);

    const Data* mSource;
    Data mWritten;
    std::uint64_t mPosition = 0;
    TIFF* mHandle = nullptr;
};

}  // namespace qv::imaging
