#pragma once

#include "QVPlatform/Data.h"
#include "Support/TestPixels.h"

/// The rival in preparing pictures, called as its users call it.
namespace benchmarksupport::vips {

/// One thread, nothing remembered from one picture to the next. Call once.
void start();

/// `thumbnail` into 1024 × 1024 (smaller pictures are enlarged, turned ones stood upright), then `jpegsave` at quality
/// 70; transparent pictures lie on white. Throws `std::runtime_error` when it fails.
qv::Data prepare(const qv::Data& encoded);

/// The whole picture, upright, in RGBA.
testsupport::Pixels decode(const qv::Data& encoded);

}  // namespace benchmarksupport::vips
