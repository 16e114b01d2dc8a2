#pragma once

#include "Support/FileDescriptor.h"

#include <filesystem>

namespace qvhost {

/// One program's turn to look for a contact in a folder and to save it there: two that look at the same moment would
/// both find nobody and make the contact twice. Ends with this object, and with the program however it ends.
///
/// It is kept by a lock on the folder above, because the folder itself may not be there yet and is locked by the
/// library for each save.
class SavingTurn {
  public:
    /// Waits for the others, at most half a minute; without a folder, or where locks are not to be had, not at all.
    explicit SavingTurn(const std::filesystem::path& folder);

  private:
    FileDescriptor mFolderAbove;
};

}  // namespace qvhost
