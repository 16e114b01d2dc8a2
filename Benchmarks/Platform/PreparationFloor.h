#pragma once

#include "QVPlatform/Data.h"

#include <memory>

namespace benchmarksupport {

/// What nobody who uses the same codec can do without: decoding the JPEG into planes at the smallest DCT scale that
/// covers the result, and encoding planes of the result's size. For YCbCr in 4:2:0.
class PreparationFloor {
  public:
    /// `result` is what preparing `encoded` gives; the planes that are encoded are its own.
    PreparationFloor(const qv::Data& encoded, const qv::Data& result);
    ~PreparationFloor();
    PreparationFloor(const PreparationFloor&) = delete;
    PreparationFloor& operator=(const PreparationFloor&) = delete;

    void run() const;

  private:
    struct Planes;
    const qv::Data& mEncoded;
    std::unique_ptr<Planes> mDecoded;
    std::unique_ptr<Planes> mResult;
};

}  // namespace benchmarksupport
