#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace qvhost {

/// What cannot be read, and why.
struct BatchMistake {
    std::filesystem::path file;
    std::string message;
};

/// The pictures that a batch reads, in their order.
struct BatchInputs {
    std::vector<std::filesystem::path> pictures;
    /// Files in folders that are no pictures.
    std::size_t skipped = 0;
    /// Files that were met before, under this or another name.
    std::size_t repeated = 0;
    std::vector<BatchMistake> mistakes;

    /// Takes files as they are named, and from folders, and those inside of them, every picture. What a folder holds is
    /// in natural order; so are files that were named in alphabetical order, as a shell lists them; others stay as
    /// they were named. Hidden files, folders behind links and what batches have written are passed over in folders.
    static BatchInputs gather(const std::vector<std::string>& names);
};

}  // namespace qvhost
