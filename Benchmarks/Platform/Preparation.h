#pragma once

#include "QVPlatform/Data.h"

namespace benchmarksupport {

/// What is done to a picture before it is sent: fitted into 1024 × 1024 and encoded as JPEG at 0.7.
qv::Data prepared(qv::Data encoded);

}  // namespace benchmarksupport
