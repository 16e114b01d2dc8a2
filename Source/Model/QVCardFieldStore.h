#pragma once

#include "QVCardScan/QVBusinessCardField.h"

#include <cstddef>
#include <memory>
#include <vector>

/// Makes the fields of a card, many to a block: an answer of a million items then asks for memory some thousand times,
/// and an ordinary one once. A block lives as long as any of its fields is held. For one thread.
class QVCardFieldStore {
  public:
    /// An empty field. The newest one lives on even when nobody holds it.
    std::shared_ptr<QVBusinessCardField> newField();

  private:
    std::shared_ptr<std::vector<QVBusinessCardField>> mBlock;
};
