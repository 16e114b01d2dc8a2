#pragma once

#include "QVCardScan/QVCardScanTypes.h"
#include "QVPlatform/Export.h"
#include "QVPlatform/Object.h"

/// What every note generator can do.
class QV_EXPORT QVNoteGenerating {
  public:
    virtual ~QVNoteGenerating() = default;

    /// `noteFromObject:` The note's content; absent when the object is of no known kind or no note could be made.
    virtual QVString noteFromObject(const std::shared_ptr<qv::Object>& object) = 0;
};
