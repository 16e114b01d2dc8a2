#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace testsupport {

/// Whether `text` is, byte for byte, what the golden file below the folder of the tests holds. A file that is not there
/// is a failure. Only with QV_UPDATE_GOLDENS=1 in the environment is the file written instead, and the test then says
/// so; look at the difference before it is committed.
testing::AssertionResult matchesGolden(const std::string& text, const std::filesystem::path& file);

}  // namespace testsupport
