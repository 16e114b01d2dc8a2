#include "TurboJPEG.h"

#include <new>

namespace qv::imaging {

TurboJPEG::TurboJPEG(tjhandle handle) : mHandle(handle) {
    if (!handle) throw std::bad_alloc();
}

std::optional<Sampling> samplingFromTurboJPEG(int code) {
    if (code < 0 || code >= TJ_NUMSAMP) return std::nullopt;
    return Sampling{tjMCUWidth[code] / 8, tjMCUHeight[code] / 8};
}

int turboJPEGSampling(const PictureLayout& layout) {
    if (layout.model == ColourModel::Grey) return TJSAMP_GRAY;
    return layout.sampling == k420 ? TJSAMP_420 : TJSAMP_444;
}

}  // namespace qv::imaging
