#include "NoteResources.h"

#include "QVCardScan/QVNoteStyles.h"
#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "QVPlatform/MD5.h"
#include "Structures.h"

#include <utility>

namespace qvc {
namespace {

/// What `qv_resource` was in the first version.
constexpr std::size_t kSmallestResource = sizeof(qv_resource);

bool refersTo(const std::string& note, const std::string& hash) {
    return note.find(" hash=\"" + hash + "\"") != std::string::npos;
}

}  // namespace

NoteResources::NoteResources(const QVString& note, const std::vector<CardPicture>& pictures,
                             const std::shared_ptr<qv::Image>& avatar) {
    if (!note) return;
    for (const CardPicture& picture : pictures)
        addCard(*note, picture);
    addRendered(*note, QV_RESOURCE_AVATAR, avatar, "image/jpeg");
    if (refersTo(*note, QVVeltoNoteGenerator::hashStringForPlaceholderAvatar())) {
        addRendered(*note, QV_RESOURCE_PLACEHOLDER, QVVeltoNoteGenerator::placeholderAvatar(), "image/png");
    }
}

void NoteResources::addCard(const std::string& note, const CardPicture& picture) {
    if (!refersTo(note, picture.hash)) return;
    // The image keeps its bytes.
    mResources.push_back({QV_RESOURCE_CARD, picture.hash, std::string(QVVeltoImageFileType),
                          std::shared_ptr<const qv::Data>(picture.image, &picture.image->encodedData())});
}

void NoteResources::addRendered(const std::string& note, std::int32_t kind, const std::shared_ptr<qv::Image>& image,
                                const std::string& type) {
    if (!image) return;
    auto bytes = std::make_shared<const qv::Data>(QVVeltoNoteGenerator::dataForNSImage(image, type));
    std::string hash = qv::lowerHexMD5(*bytes);
    if (refersTo(note, hash)) mResources.push_back({kind, std::move(hash), type, std::move(bytes)});
}

bool NoteResources::fill(std::size_t index, qv_resource* resource) const {
    if (index >= mResources.size()) return false;
    const Resource& found = mResources[index];
    return fillStructure<kSmallestResource>(resource, qv_resource{0, found.kind, found.hash.c_str(), found.type.c_str(),
                                                                  found.bytes->data(), found.bytes->size()});
}

}  // namespace qvc
