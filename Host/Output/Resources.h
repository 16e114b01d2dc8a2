#pragma once

#include "Output/FileKind.h"
#include "QVPlatform/Data.h"
#include "QVPlatform/Geometry.h"
#include "Scan/CardScan.h"

#include <map>
#include <string>
#include <vector>

namespace qvhost {

/// The pictures that a note may refer to, by the hash of their bytes: the card's photographs as their files are, the
/// contact's avatar and the placeholder for one as the note generator hashed them.
class Resources {
  public:
    Resources() = default;
    Resources(const std::vector<CardPicture>& pictures, const QVCardProcessingResponse& response);

    void add(qv::Data bytes);

    /// The bytes of that hash; null when there are none.
    const qv::Data* find(const std::string& hash) const;

    /// The picture as a `data:` address for a web page. What browsers do not show is turned into a JPEG. Empty when it
    /// cannot be.
    std::string dataAddress(const std::string& hash) const;

    /// The size of the upright picture in pixels; zero when it is unknown.
    qv::Size size(const std::string& hash) const;

  private:
    std::map<std::string, qv::Data> mBytes;
};

}  // namespace qvhost
