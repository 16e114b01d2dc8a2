#pragma once

#include "Support/ExitStatus.h"

#include <string>
#include <utility>
#include <variant>

namespace qvhost {

/// Why something came to nothing, in words for the person at the keyboard: what, where, and what to do.
struct Failure {
    ExitStatus status = ExitStatus::WrongCall;
    std::string message;
};

/// A value, or why there is none.
template <typename T>
class [[nodiscard]] Result {
  public:
    Result(T value) : mOutcome(std::move(value)) {}            // NOLINT(google-explicit-constructor)
    Result(Failure failure) : mOutcome(std::move(failure)) {}  // NOLINT(google-explicit-constructor)

    explicit operator bool() const { return std::holds_alternative<T>(mOutcome); }
    T& operator*() { return std::get<T>(mOutcome); }
    const T& operator*() const { return std::get<T>(mOutcome); }
    T* operator->() { return &std::get<T>(mOutcome); }
    const T* operator->() const { return &std::get<T>(mOutcome); }
    const Failure& failure() const { return std::get<Failure>(mOutcome); }

  private:
    std::variant<T, Failure> mOutcome;
};

}  // namespace qvhost
