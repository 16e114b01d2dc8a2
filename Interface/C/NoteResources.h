#pragma once

#include "QVPlatform/Data.h"
#include "QVPlatform/Image.h"
#include "QVSocialSearch/QVSocialSearchTypes.h"
#include "RequestObject.h"
#include "qvcardscan.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qvc {

/// The pictures that a note refers to by their hashes.
class NoteResources {
  public:
    NoteResources() = default;
    /// Those of the card's pictures, the contact's avatar (may be null) and the placeholder for one that the note
    /// names.
    NoteResources(const QVString& note, const std::vector<CardPicture>& pictures,
                  const std::shared_ptr<qv::Image>& avatar);

    std::size_t size() const { return mResources.size(); }
    /// Fills the structure; its texts and bytes are this object's. Says whether it could.
    bool fill(std::size_t index, qv_resource* resource) const;

  private:
    struct Resource {
        std::int32_t kind;
        std::string hash;
        std::string type;
        std::shared_ptr<const qv::Data> bytes;
    };
    void addCard(const std::string& note, const CardPicture& picture);
    void addRendered(const std::string& note, std::int32_t kind, const std::shared_ptr<qv::Image>& image,
                     const std::string& type);

    std::vector<Resource> mResources;
};

}  // namespace qvc
