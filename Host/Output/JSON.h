#pragma once

#include "QVCardScan/QVCardScanTypes.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

/// What the program's JSON has in common: members in a fixed order, null for what is absent.
namespace qvhost::JSON {

using Value = nlohmann::ordered_json;

Value from(const QVString& string);
Value from(const QVStringArray& strings);
Value from(const QVHandleSet& handles);

/// The value as indented UTF-8 text with a line break at its end. Strings that are not UTF-8 are repaired; numbers are
/// written so that they read back the same, and what is no number becomes null.
std::string text(const Value& value);

/// The same on one line.
std::string line(const Value& value);

}  // namespace qvhost::JSON
