#pragma once

#include "QVCardScan/QVBizCardManager.h"
#include "QVPlatform/Data.h"
#include "QVPlatform/Image.h"

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

    struct Outcome {
        double wall = 0;                         ///< milliseconds until the last card is done
        double processorOutsidePreparation = 0;  ///< milliseconds of the whole process
    };
    /// Queues so many cards at once and waits for them. Throws `std::runtime_error` when one fails.
    Outcome run(int count);

    /// What is posted for each card.
    const qv::Data& preparedBytes() const { return mPrepared; }
    /// Median milliseconds of one preparation with nothing else running.
    double preparationOnWall() const;

  private:
    qv::Data prepare() const;

    std::shared_ptr<qv::Image> mPhotograph;
    qv::Data mPrepared;
    std::shared_ptr<QVBizCardManager> mManager;
    int mNumber = 0;  ///< of the last request; no two have the same identifier
};

}  // namespace benchmarksupport
