#pragma once

#include "QVCardScan/QVBizCardManager.h"
#include "QVPlatform/Data.h"
#include "QVPlatform/Image.h"
#include "Support/Duel.h"

#include <memory>
#include <string>

namespace benchmarksupport {

/// Cards that a manager of its own takes through the whole pipeline, from the photograph to the note.
class CardRun {
  public:
    CardRun(const std::string& serverURL, const qv::Data& photograph);
    ~CardRun();
    CardRun(const CardRun&) = delete;
    CardRun& operator=(const CardRun&) = delete;

    /// Queues so many cards at once and waits for them; what it took, in all. Throws `std::runtime_error` when one
    /// fails.
    Times run(int count);

    /// Prepares the photograph once, as the pipeline does.
    qv::Data prepare() const;

    /// What is posted for each card.
    const qv::Data& preparedBytes() const { return mPrepared; }
    /// Median milliseconds of one preparation with nothing else running.
    double preparationOnWall() const;

  private:
    std::shared_ptr<qv::Image> mPhotograph;
    qv::Data mPrepared;
    std::shared_ptr<QVBizCardManager> mManager;
    int mNumber = 0;  ///< of the last request; no two have the same identifier
};

}  // namespace benchmarksupport
