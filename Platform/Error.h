#pragma once

#include "Export.h"

#include <any>
#include <map>
#include <string>
#include <string_view>

namespace qv {

/// A dictionary from text keys to values of any type, as notifications and errors carry it.
using Dictionary = std::map<std::string, std::any>;

/// A failure as a value: who says it (`domain`), what (`code`), and whatever else is known (`userInfo`).
/// A plain value; copies are independent.
struct QV_EXPORT Error {
    /// Who says it.
    std::string domain;
    /// What, in the words of the domain.
    long code = 0;
    /// Whatever else is known.
    Dictionary userInfo;
};

/// `userInfo` key under which the platform's own errors carry a readable explanation (`std::string`).
inline constexpr std::string_view kErrorDescriptionKey = "QVPlatformErrorDescription";

}  // namespace qv
