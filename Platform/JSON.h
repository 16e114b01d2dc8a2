#pragma once

#include "Data.h"
#include "Export.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qv {

/// What a text may cost before it is even looked at.
struct JSONLimits {
    /// Bytes.
    std::size_t maximumSize = std::size_t{1} << 20;
    /// Arrays and objects inside of each other.
    std::size_t maximumDepth = 32;
};

/// A value read out of a JSON text (RFC 8259) that others wrote, to be asked with confidence: whatever is not there, or
/// is of another kind than asked for, is absent. A cheap copy; parts stay valid without the whole. Never changes, so
/// any thread may use it.
class QV_EXPORT JSON {
  public:
    /// Null, the value of what is not there.
    JSON() = default;

    /// Nothing when the text is not exactly one value, is not UTF-8, or is beyond the limits. Of members with one name
    /// the last counts.
    static std::optional<JSON> read(const Data& text, const JSONLimits& limits = {});

    /// Whether it is an object.
    bool isObject() const;

    /// The member of an object; null for anything else.
    JSON member(std::string_view name) const;
    /// The elements of an array; none of anything else.
    std::vector<JSON> elements() const;

    /// Absent for anything but a string (which may hold any character, NUL among them), and for anything but a truth
    /// value.
    std::optional<std::string> string() const;
    /// Absent for anything but a truth value.
    std::optional<bool> boolean() const;

  private:
    struct Value;
    explicit JSON(std::shared_ptr<const Value> value) : mValue(std::move(value)) {}
    JSON partOfThis(const void* part) const;
    std::shared_ptr<const Value> mValue;
};

}  // namespace qv
