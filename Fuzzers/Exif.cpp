// The orientation in an EXIF block.

#include "Imaging/Orientation.h"
#include "Support/Require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const auto orientation = qv::imaging::Orientation::fromExif(bytes, count);
    const auto size = orientation.turned({3, 5});
    fuzzing::require(size == qv::imaging::PixelSize{3, 5} || orientation.transposes(),
                     "only transposing changes sides");
    return 0;
}
