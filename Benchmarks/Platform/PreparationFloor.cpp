#include "Platform/PreparationFloor.h"

#include <turbojpeg.h>

#include <array>
#include <stdexcept>
#include <vector>

namespace benchmarksupport {

namespace {

void check(int status) {
    if (status != 0) throw std::runtime_error(tjGetErrorStr());
}

struct Size {
    int width = 0;
    int height = 0;
};

Size sizeOf(const qv::Data& jpeg) {
    const tjhandle codec = tjInitDecompress();
    Size size;
    int sampling = 0;
    int space = 0;
    check(tjDecompressHeader3(codec, jpeg.data(), jpeg.size(), &size.width, &size.height, &sampling, &space));
    tjDestroy(codec);
    if (sampling != TJSAMP_420) throw std::invalid_argument("the floor is that of 4:2:0");
    return size;
}

Size smallestCovering(Size stored, Size target) {
    int count = 0;
    const tjscalingfactor* factors = tjGetScalingFactors(&count);
    Size best = stored;
    for (int index = 0; index < count; ++index) {
        const Size size{TJSCALED(stored.width, factors[index]), TJSCALED(stored.height, factors[index])};
        if (size.width >= target.width && size.height >= target.height && size.width < best.width) best = size;
    }
    return best;
}

}  // namespace

struct PreparationFloor::Planes {
    explicit Planes(Size pixels) : size(pixels) {
        for (int index = 0; index < 3; ++index) {
            strides[static_cast<std::size_t>(index)] = tjPlaneWidth(index, size.width, TJSAMP_420);
            samples[static_cast<std::size_t>(index)].resize(
                tjPlaneSizeYUV(index, size.width, 0, size.height, TJSAMP_420));
            pointers[static_cast<std::size_t>(index)] = samples[static_cast<std::size_t>(index)].data();
        }
    }

    void decode(const qv::Data& jpeg) {
        const tjhandle codec = tjInitDecompress();
        check(tjDecompressToYUVPlanes(codec, jpeg.data(), jpeg.size(), pointers.data(), size.width, strides.data(),
                                      size.height, 0));
        tjDestroy(codec);
    }

    void encode() const {
        constexpr int kQuality = 70;
        std::array<const unsigned char*, 3> planes{pointers[0], pointers[1], pointers[2]};
        unsigned char* bytes = nullptr;
        unsigned long count = 0;
        const tjhandle codec = tjInitCompress();
        check(tjCompressFromYUVPlanes(codec, planes.data(), size.width, strides.data(), size.height, TJSAMP_420, &bytes,
                                      &count, kQuality, TJFLAG_ACCURATEDCT));
        tjDestroy(codec);
        tjFree(bytes);
    }

    Size size;
    std::array<std::vector<unsigned char>, 3> samples;
    std::array<unsigned char*, 3> pointers{};
    std::array<int, 3> strides{};
};

PreparationFloor::PreparationFloor(const qv::Data& encoded, const qv::Data& result)
    : mEncoded(encoded),
      mDecoded(std::make_unique<Planes>(smallestCovering(sizeOf(encoded), sizeOf(result)))),
      mResult(std::make_unique<Planes>(sizeOf(result))) {
    mResult->decode(result);
}

PreparationFloor::~PreparationFloor() = default;

void PreparationFloor::run() const {
    mDecoded->decode(mEncoded);
    mResult->encode();
}

}  // namespace benchmarksupport
