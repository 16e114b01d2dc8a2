#include "PictureScaler.h"

#include "ColourMath.h"
#include "PlaneScaler.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace qv::imaging {

namespace {

/// One direction of one plane, before and after.
struct AxisRequest {
    double content;      ///< pixels of the source that are picture
    int size;            ///< pixels of the result
    bool isMirrored;     ///< whether the result is mirrored afterwards
    int sourceSampling;  ///< pixels per sample before
    int sampling;        ///< pixels per sample after
    int sourceCount;     ///< samples before
    int count;           ///< samples after
};

// Sample k of a plane spans the pixels k·s…(k+1)·s. When the size is no multiple of s, the last sample reaches beyond
// the picture; where the plane is mirrored afterwards it is the first one that must reach beyond, or chroma would end
// up half a sample beside its luma.
ScaleAxis scaleAxis(const AxisRequest& request) {
    const double ratio = request.content / request.size / request.sourceSampling;
    const int spanned = request.count * request.sampling;
    ScaleAxis axis;
    axis.sourceCount =
        std::min(request.sourceCount, static_cast<int>(std::ceil(request.content / request.sourceSampling)));
    axis.start = request.isMirrored ? (request.size - spanned) * ratio : 0;
    axis.span = spanned * ratio;
    axis.count = request.count;
    return axis;
}

class PlaneRequest {
  public:
    PlaneRequest(const Picture& source, const PictureLayout& target, std::size_t index, const Orientation& orientation)
        : mSize(target.sizeOfPlane(index)) {
        const Sampling before = source.layout().samplingOfPlane(index);
        const Sampling after = target.samplingOfPlane(index);
        const Plane& plane = source.plane(index);
        mHorizontal = scaleAxis({source.contentWidth(), target.size.width, orientation.mirrorsX(), before.x, after.x,
                                 plane.width(), mSize.width});
        mVertical = scaleAxis({source.contentHeight(), target.size.height, orientation.mirrorsY(), before.y, after.y,
                               plane.height(), mSize.height});
    }
    bool keepsSamples() const { return mHorizontal.isIdentity() && mVertical.isIdentity(); }
    Plane perform(Plane& source) const {
        if (!keepsSamples()) return scaledPlane(source, mHorizontal, mVertical);
        source.trim(mSize);
        return std::move(source);
    }

  private:
    PixelSize mSize;
    ScaleAxis mHorizontal;
    ScaleAxis mVertical;
};

Picture resampled(Picture stored, const PictureLayout& target, const Orientation& orientation) {
    std::vector<Plane> planes;
    for (std::size_t index = 0; index < target.planeCount(); ++index) {
        planes.push_back(PlaneRequest(stored, target, index, orientation).perform(stored.plane(index)));
    }
    return {target, std::move(planes)};
}

}  // namespace

Picture scaledPicture(Picture stored, PixelSize size, Sampling sampling, const Orientation& orientation) {
    PictureLayout target{stored.model(), size, stored.model() == ColourModel::YCbCr ? sampling : k444};
    if (orientation.transposes()) target = target.transposed();
    // Only a resampling mixes the colours of pixels; without one, the premultiplication would lose bits for nothing.
    const bool isWeighted =
        stored.model() == ColourModel::RGBA && !PlaneRequest(stored, target, 0, orientation).keepsSamples();
    const bool isVideo = stored.layout().range == SampleRange::Video;
    if (isWeighted) premultiply(stored);
    Picture result = resampled(std::move(stored), target, orientation);
    if (isWeighted) unpremultiply(result);
    if (isVideo) spreadVideoRange(result);
    return orientation.turned(std::move(result));
}

}  // namespace qv::imaging
