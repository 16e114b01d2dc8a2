#pragma once

#include "Export.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

namespace qv {

/// The root of the classes whose objects are handed around by shared reference and told apart at run time.
class QV_EXPORT Object {
  public:
    virtual ~Object() = default;

    /// Text for logs.
    virtual std::string description() const;

    /// Whether the two stand for the same thing; by address unless a class says otherwise.
    virtual bool isEqual(const std::shared_ptr<const Object>& other) const { return other.get() == this; }

    /// Equal objects have equal hashes.
    virtual std::size_t hash() const { return std::hash<const Object*>{}(this); }

  protected:
    Object() = default;
    Object(const Object&) = default;
    Object& operator=(const Object&) = default;
};

}  // namespace qv
