#pragma once

#include <filesystem>

namespace testsupport {

/// The repository's own folder of test data.
inline std::filesystem::path testsFolder() {
    return QV_TESTS_DIR;
}

}  // namespace testsupport
