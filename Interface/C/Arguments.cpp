#include "Arguments.h"

#include "ErrorObject.h"
#include "QVPlatform/Text.h"

#include <cstring>
#include <memory>

namespace qvc {
namespace {

constexpr const char* kFault = "Out of memory, or a fault of the library; its log says which.";

}  // namespace

qv_status report(const Outcome& outcome, qv_error** error) noexcept {
    guardedDo([&] {
        if (outcome.status == QV_OK || error == nullptr) return;
        *error = ErrorObject::makeHandleFor(outcome.reason.empty() ? Outcome{outcome.status, kFault} : outcome);
    });
    return outcome.status;
}

std::optional<std::string> textOf(const char* text) {
    if (text == nullptr) return std::nullopt;
    return std::string(text);
}

Outcome checkText(const char* text, const char* what) {
    if (text == nullptr) return {};
    const qv::Data bytes(text, text + std::strlen(text));
    if (qv::Text::stringFromUTF8(bytes)) return {};
    return Outcome::invalid(std::string("The ") + what + " is no UTF-8 text.");
}

Outcome deadHandle() {
    return Outcome::invalid("The handle is null, released already, or of another kind.");
}

}  // namespace qvc
