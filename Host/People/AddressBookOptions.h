#pragma once

#include "People/AddressBookPlace.h"
#include "Support/Result.h"

#include <filesystem>
#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace qvhost {

/// The options that choose an address book.
class AddressBookOptions {
  public:
    enum class Access { Reading, Saving };

    void describe(CLI::App& command);

    /// Whether one was chosen.
    bool areGiven() const { return mFolder || mServer; }

    /// The address book that was chosen, else the folder `standard`, else this user's own folder, which is named on
    /// standard error then. Saving makes a folder that is missing; reading refuses one that was chosen and finds no
    /// contacts (`book` is null) in this user's own.
    Result<AddressBookPlace> open(Access access, const std::optional<std::string>& standard = std::nullopt) const;

  private:
    Result<AddressBookPlace> openServer() const;

    std::optional<std::string> mFolder;
    std::optional<std::string> mServer;
    std::optional<std::string> mLoginFile;
};

}  // namespace qvhost
