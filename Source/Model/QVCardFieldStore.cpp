#include "QVCardFieldStore.h"

#include <algorithm>

// A block never grows beyond what it reserved, so its fields stay where they are.
std::shared_ptr<QVBusinessCardField> QVCardFieldStore::newField() {
    constexpr std::size_t kFirst = 16;
    constexpr std::size_t kLargest = 256;
    if (!mBlock || mBlock->size() == mBlock->capacity()) {
        const std::size_t capacity = mBlock ? std::min(mBlock->capacity() * 2, kLargest) : kFirst;
        mBlock = std::make_shared<std::vector<QVBusinessCardField>>();
        mBlock->reserve(capacity);
    }
    return {mBlock, &mBlock->emplace_back()};
}
