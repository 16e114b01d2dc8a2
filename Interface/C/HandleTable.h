#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <unordered_map>

namespace qvc {

/// What a handle stands for.
enum class HandleKind : unsigned { Error = 1, Request, Response, SearchResult, Work };

/// The objects behind the host's handles. A handle is a number that is never given twice, so that one that was released
/// is found out, whatever the memory is used for since. Any thread.
class HandleTable {
  public:
    using Number = std::uintptr_t;

    /// Never destroyed: callbacks may still come while the process ends.
    static HandleTable& shared();

    Number insert(HandleKind kind, std::shared_ptr<void> object);
    /// The object; null for a number that is not, or no longer, that of such a handle, which is logged unless it is 0.
    std::shared_ptr<void> find(HandleKind kind, Number number) const;
    /// The same, and the handle is no more.
    std::shared_ptr<void> take(HandleKind kind, Number number);
    /// How many handles the host has yet to release.
    std::size_t size() const;

  private:
    mutable std::mutex mMutex;
    Number mLast = 0;
    std::unordered_map<Number, std::shared_ptr<void>> mObjects;
};

}  // namespace qvc
