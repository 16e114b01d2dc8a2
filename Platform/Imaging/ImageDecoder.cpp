#include "ImageDecoder.h"

#include "HEICDecoder.h"
#include "JPEGDecoder.h"
#include "PNGDecoder.h"
#include "TIFFDecoder.h"
#include "WebPDecoder.h"

#include <string_view>

namespace qv::imaging {

using namespace std::string_view_literals;

std::unique_ptr<const ImageDecoder> ImageDecoder::forData(const Data& data) {
    const std::string_view bytes(reinterpret_cast<const char*>(data.data()), data.size());
    if (bytes.starts_with("\xFF\xD8\xFF"sv)) return JPEGDecoder::create(data);
    if (bytes.starts_with("\x89PNG\r\n\x1A\n"sv)) return PNGDecoder::create(data);
    if (bytes.starts_with("II*\0"sv) || bytes.starts_with("MM\0*"sv)) return TIFFDecoder::create(data);
    if (bytes.starts_with("II+\0"sv) || bytes.starts_with("MM\0+"sv)) return TIFFDecoder::create(data);
    if (bytes.starts_with("RIFF"sv) && bytes.substr(0, 12).ends_with("WEBP"sv)) return WebPDecoder::create(data);
    if (HEICDecoder::recognises(data)) return HEICDecoder::create(data);
    return nullptr;
}

}  // namespace qv::imaging
