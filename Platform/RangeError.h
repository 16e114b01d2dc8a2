#pragma once

#include "Export.h"

#include <stdexcept>

namespace qv {

/// The one exception the platform's string operations raise: an index or a range outside of the text.
class QV_EXPORT RangeError : public std::out_of_range {
  public:
    using std::out_of_range::out_of_range;
};

}  // namespace qv
