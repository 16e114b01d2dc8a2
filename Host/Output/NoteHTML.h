#pragma once

#include "Output/Resources.h"
#include "QVCardScan/QVCardProcessingResponse.h"

#include <string>

namespace qvhost {

/// A note as a page of its own for any browser: pictures inside, turned upright, no script, nothing loaded from
/// anywhere. `title` is plain text.
std::string noteHTML(const std::string& note, const std::string& title, const Resources& resources,
                     const QVRotationMap& rotation);

}  // namespace qvhost
