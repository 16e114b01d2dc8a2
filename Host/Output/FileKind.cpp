#include "Output/FileKind.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace qvhost {
namespace {

using namespace std::string_view_literals;

struct Signature {
    std::size_t position;
    std::string_view bytes;
    FileKind kind;
};

constexpr Signature kSignatures[] = {
    {0, "\xFF\xD8\xFF"sv, {"jpg", "image/jpeg", true}}, {0, "\x89PNG\r\n\x1A\n"sv, {"png", "image/png", true}},
    {8, "WEBP"sv, {"webp", "image/webp", true}},        {0, "II*\0"sv, {"tiff", "image/tiff", false}},
    {0, "MM\0*"sv, {"tiff", "image/tiff", false}},      {0, "II+\0"sv, {"tiff", "image/tiff", false}},
    {0, "MM\0+"sv, {"tiff", "image/tiff", false}},      {4, "ftyp"sv, {"heic", "image/heic", false}},
};

constexpr FileKind kUnknown{"bin", "application/octet-stream", false};

}  // namespace

FileKind FileKind::of(const qv::Data& bytes) {
    const std::string head(bytes.begin(),
                           bytes.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(bytes.size(), 16)));
    for (const Signature& signature : kSignatures) {
        if (head.size() > signature.position && head.substr(signature.position).starts_with(signature.bytes))
            return signature.kind;
    }
    return kUnknown;
}

bool FileKind::isExtension(std::string_view ending) {
    if (!ending.starts_with('.')) return false;
    ending.remove_prefix(1);
    return ending == kUnknown.extension ||
           std::any_of(std::begin(kSignatures), std::end(kSignatures),
                       [&](const auto& known) { return ending == known.kind.extension; });
}

}  // namespace qvhost
