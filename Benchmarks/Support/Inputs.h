#pragma once

#include "QVPlatform/Data.h"
#include "Support/TestPixels.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace benchmarksupport {

/// One picture to prepare: how it is called in the table, the file that it lies in, and how that file is made.
struct Input {
    std::string name;
    std::string file;
    std::function<qv::Data()> make;
    /// Least times as fast as libvips; 1 is not slower.
    double leastRatio = 1;
    /// Most times the floor; 0 where no floor is measured.
    double mostFloors = 0;
    /// The picture that was encoded; empty where decoding the file tells it.
    std::function<testsupport::Pixels()> printed = {};
};

/// The pictures that preparation is measured on.
const std::vector<Input>& inputs();

/// The folder of the files: the environment's QV_BENCHMARK_INPUTS, or the system's for temporary files.
std::filesystem::path inputFolder();

/// An input's bytes, made and kept in the folder on the first call.
qv::Data readInput(const Input& input);
std::filesystem::path pathOfInput(const Input& input);

}  // namespace benchmarksupport
