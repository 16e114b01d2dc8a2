#include "HandleTable.h"

#include "QVPlatform/Log.h"

#include <utility>

namespace qvc {
namespace {

/// The lowest bits of a number tell the kind.
constexpr unsigned kKindBits = 4;

bool isOfKind(HandleTable::Number number, HandleKind kind) {
    return (number & ((1U << kKindBits) - 1)) == static_cast<unsigned>(kind);
}

void reportDeadHandle() {
    qv::Log::write("<WARNING> A call was given a handle that is released already, or of another kind! Ignored.");
}

}  // namespace

HandleTable& HandleTable::shared() {
    static HandleTable* const table = new HandleTable;
    return *table;
}

HandleTable::Number HandleTable::insert(HandleKind kind, std::shared_ptr<void> object) {
    const std::lock_guard lock(mMutex);
    const Number number = (++mLast << kKindBits) | static_cast<unsigned>(kind);
    mObjects.emplace(number, std::move(object));
    return number;
}

std::shared_ptr<void> HandleTable::find(HandleKind kind, Number number) const {
    if (number == 0) return nullptr;
    {
        const std::lock_guard lock(mMutex);
        const auto entry = mObjects.find(number);
        if (entry != mObjects.end() && isOfKind(number, kind)) return entry->second;
    }
    reportDeadHandle();
    return nullptr;
}

/// The object is let go by the caller, outside of the lock: it may release what the host gave it.
std::shared_ptr<void> HandleTable::take(HandleKind kind, Number number) {
    if (number == 0) return nullptr;
    {
        const std::lock_guard lock(mMutex);
        const auto entry = mObjects.find(number);
        if (entry != mObjects.end() && isOfKind(number, kind)) {
            auto object = std::move(entry->second);
            mObjects.erase(entry);
            return object;
        }
    }
    reportDeadHandle();
    return nullptr;
}

std::size_t HandleTable::size() const {
    const std::lock_guard lock(mMutex);
    return mObjects.size();
}

}  // namespace qvc
