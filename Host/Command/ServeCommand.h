#pragma once

#include "Command/Command.h"
#include "Page/PageKey.h"
#include "Page/PageServer.h"
#include "Page/PictureShelf.h"
#include "People/AddressBookOptions.h"
#include "Recognition/ServerOptions.h"

#include <cstdint>
#include <optional>
#include <string>

namespace qvhost {

/// `serve`: a page for a browser on this machine, on which photographs of cards become contacts.
class ServeCommand : public Command {
  public:
    CLI::App* describe(CLI::App& program) override;
    ExitStatus run() override;

  private:
    ExitStatus serve(PageServer& server, const PageKey& key, PictureShelf& shelf, RecognitionServer& recogniser,
                     AddressBookPlace place);
    std::string address(const PageServer& server, const PageKey& key) const;
    bool isForNetwork() const;

    std::string mListen = "127.0.0.1";
    std::uint16_t mPort = 0;
    std::optional<std::string> mKeyFile;
    ServerOptions mServer;
    AddressBookOptions mAddressBook;
};

}  // namespace qvhost
