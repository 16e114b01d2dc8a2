#pragma once

#include "Guard.h"
#include "qvcardscan.h"

#include <optional>
#include <string>

namespace qvc {

/// What a call came to: all well, or a status and the reason in words.
struct Outcome {
    qv_status status = QV_OK;
    std::string reason;

    static Outcome invalid(std::string reason) { return {QV_INVALID_ARGUMENT, std::move(reason)}; }
    /// What is thrown ends here: out of memory, for the most part, so that this takes none.
    static Outcome fault() { return {QV_FAILED, {}}; }
};

/// Tells the host: the status is the answer, the rest goes into the slot, unless that is null.
qv_status report(const Outcome& outcome, qv_error** error) noexcept;

/// Runs the body of an exported function that can fail. What it throws is a failure with an error, too.
template <typename Body>
qv_status reported(qv_error** error, Body&& body) noexcept {
    if (error != nullptr) *error = nullptr;
    const Outcome outcome = guarded<Outcome>(Outcome::fault(), body);
    return report(outcome, error);
}

/// The text as a value; absent for null.
std::optional<std::string> textOf(const char* text);

/// What is wrong with a text that is there but no UTF-8; all well for null. `what` names the argument.
Outcome checkText(const char* text, const char* what);

/// The answer for a handle that is not live.
Outcome deadHandle();

}  // namespace qvc
