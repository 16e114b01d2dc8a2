#pragma once

#include "PictureLayout.h"

#include <turbojpeg.h>

#include <optional>

namespace qv::imaging {

/// Owns one TurboJPEG instance. Throws `std::bad_alloc` when the library gives none.
class TurboJPEG {
  public:
    explicit TurboJPEG(tjhandle handle);
    ~TurboJPEG() { tjDestroy(mHandle); }
    TurboJPEG(const TurboJPEG&) = delete;
    TurboJPEG& operator=(const TurboJPEG&) = delete;
    tjhandle handle() const { return mHandle; }

    /// Whether a call that returned `status` left a usable result: it did so without errors or with warnings only.
    bool isUsable(int status) const { return status == 0 || tjGetErrorCode(mHandle) == TJERR_WARNING; }

  private:
    tjhandle mHandle;
};

/// The library's code for a chroma sampling, and the reverse; nothing where there is none.
std::optional<Sampling> samplingFromTurboJPEG(int code);
int turboJPEGSampling(const PictureLayout& layout);

}  // namespace qv::imaging
