#pragma once

#include "Arguments.h"
#include "Handles.h"
#include "QVPlatform/Error.h"

#include <memory>
#include <optional>
#include <string>

namespace qvc {

/// An error as the host sees it. Never changes.
class ErrorObject {
  public:
    explicit ErrorObject(const qv::Error& error);
    explicit ErrorObject(const Outcome& outcome);

    static qv_error* makeHandleFor(const qv::Error& error);
    static qv_error* makeHandleFor(const Outcome& outcome);

    const std::string& domain() const { return mDomain; }
    std::int64_t code() const { return mCode; }
    const std::optional<std::string>& message() const { return mMessage; }
    const std::optional<qv::Error>& underlying() const { return mUnderlying; }

  private:
    std::string mDomain;
    std::int64_t mCode;
    std::optional<std::string> mMessage;
    std::optional<qv::Error> mUnderlying;
};

}  // namespace qvc
