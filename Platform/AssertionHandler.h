#pragma once

#include "Export.h"

#include <functional>
#include <string_view>

namespace qv {

/// What a failed assertion says: a programming error of the host, found at run time.
struct AssertionFailure {
    /// What should have been so.
    std::string_view description;
    /// The operation that found out.
    std::string_view function;
    /// The source unit.
    std::string_view file;
    /// The line in it.
    int line = 0;
};

/// The one place where failed assertions go. The default handler logs and returns; whatever the handler does, the code
/// that asserted does not go on with its work. What a handler throws is caught here and logged: the assertion may have
/// failed on a thread of the library, or inside a call of the host's.
class QV_EXPORT AssertionHandler {
  public:
    /// Gets each failed assertion, on the thread that asserted.
    using Handler = std::function<void(const AssertionFailure&)>;

    /// Installs the host's handler; an empty function brings the default back.
    static void setHandler(Handler handler);
    /// Tells the handler.
    static void handleFailure(const AssertionFailure& failure);
};

}  // namespace qv
