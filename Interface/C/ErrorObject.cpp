#include "ErrorObject.h"

#include "QVCardScan/QVCardProcessingError.h"

#include <any>

namespace qvc {
namespace {

template <typename Value>
std::optional<Value> valueOf(const qv::Error& error, std::string_view key) {
    const auto entry = error.userInfo.find(std::string(key));
    const auto* value = entry == error.userInfo.end() ? nullptr : std::any_cast<Value>(&entry->second);
    return value ? std::optional<Value>(*value) : std::nullopt;
}

}  // namespace

ErrorObject::ErrorObject(const qv::Error& error)
    : mDomain(error.domain),
      mCode(error.code),
      mMessage(valueOf<std::string>(error, qv::kErrorDescriptionKey)),
      mUnderlying(valueOf<qv::Error>(error, kQVCardProcessingUnderlyingErrorKey)) {
}

ErrorObject::ErrorObject(const Outcome& outcome)
    : mDomain(QV_C_ERROR_DOMAIN), mCode(outcome.status), mMessage(outcome.reason) {
}

qv_error* ErrorObject::makeHandleFor(const qv::Error& error) {
    return makeHandle<qv_error>(std::make_shared<const ErrorObject>(error));
}

qv_error* ErrorObject::makeHandleFor(const Outcome& outcome) {
    return makeHandle<qv_error>(std::make_shared<const ErrorObject>(outcome));
}

}  // namespace qvc

using namespace qvc;

void qv_error_release(qv_error* error) {
    guardedDo([&] { takeObject(error); });
}

const char* qv_error_domain(const qv_error* error) {
    return guarded<const char*>(nullptr, [&] {
        const auto object = objectOf(error);
        return object ? object->domain().c_str() : nullptr;
    });
}

int64_t qv_error_code(const qv_error* error) {
    return guarded<int64_t>(0, [&] {
        const auto object = objectOf(error);
        return object ? object->code() : 0;
    });
}

const char* qv_error_message(const qv_error* error) {
    return guarded<const char*>(nullptr, [&] {
        const auto object = objectOf(error);
        return object && object->message() ? object->message()->c_str() : nullptr;
    });
}

qv_error* qv_error_underlying(const qv_error* error) {
    return guarded<qv_error*>(nullptr, [&]() -> qv_error* {
        const auto object = objectOf(error);
        return object && object->underlying() ? ErrorObject::makeHandleFor(*object->underlying()) : nullptr;
    });
}
