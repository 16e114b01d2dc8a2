#pragma once

#include "HandleTable.h"
#include "qvcardscan.h"

#include <memory>
#include <utility>

namespace qvc {

class ErrorObject;
class RequestObject;
struct ResponseObject;
struct SearchResultObject;
struct WorkObject;

/// The object and the kind behind each of the header's types.
template <typename Handle>
struct HandleTraits;
template <>
struct HandleTraits<qv_error> {
    using Object = const ErrorObject;
    static constexpr HandleKind kKind = HandleKind::Error;
};
template <>
struct HandleTraits<qv_request> {
    using Object = RequestObject;
    static constexpr HandleKind kKind = HandleKind::Request;
};
template <>
struct HandleTraits<qv_response> {
    using Object = const ResponseObject;
    static constexpr HandleKind kKind = HandleKind::Response;
};
template <>
struct HandleTraits<qv_search_result> {
    using Object = const SearchResultObject;
    static constexpr HandleKind kKind = HandleKind::SearchResult;
};
template <>
struct HandleTraits<qv_work> {
    using Object = WorkObject;
    static constexpr HandleKind kKind = HandleKind::Work;
};

template <typename Handle>
using ObjectPointer = std::shared_ptr<typename HandleTraits<Handle>::Object>;

template <typename Handle>
HandleTable::Number numberOf(const Handle* handle) {
    return reinterpret_cast<HandleTable::Number>(handle);
}

/// A new handle, which is the host's. Nobody ever looks behind the pointer that it is dressed as.
template <typename Handle>
Handle* makeHandle(ObjectPointer<Handle> object) {
    using Stored = std::remove_const_t<typename HandleTraits<Handle>::Object>;
    const auto number =
        HandleTable::shared().insert(HandleTraits<Handle>::kKind, std::const_pointer_cast<Stored>(std::move(object)));
    return reinterpret_cast<Handle*>(number);  // NOLINT(performance-no-int-to-ptr)
}

/// Keeps the object as long as the caller needs it, whoever releases the handle meanwhile. Null: not a live handle.
template <typename Handle>
ObjectPointer<Handle> objectOf(const Handle* handle) {
    return std::static_pointer_cast<typename HandleTraits<Handle>::Object>(
        HandleTable::shared().find(HandleTraits<Handle>::kKind, numberOf(handle)));
}

template <typename Handle>
ObjectPointer<Handle> takeObject(const Handle* handle) {
    return std::static_pointer_cast<typename HandleTraits<Handle>::Object>(
        HandleTable::shared().take(HandleTraits<Handle>::kKind, numberOf(handle)));
}

}  // namespace qvc
