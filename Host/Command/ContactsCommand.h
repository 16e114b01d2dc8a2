#pragma once

#include "Command/Command.h"
#include "People/AddressBookOptions.h"
#include "People/ContactsShelf.h"

#include <string>

namespace qvhost {

/// `contacts list|show|find`: what is in the address book.
class ContactsCommand : public Command {
  public:
    CLI::App* describe(CLI::App& program) override;
    ExitStatus run() override;

  private:
    CLI::App* add(CLI::App& command, const char* name, const char* description);

    ExitStatus list(const ContactsShelf& shelf) const;
    ExitStatus find(const ContactsShelf& shelf) const;
    ExitStatus show(const ContactsShelf& shelf) const;
    ExitStatus print(const ContactsShelf::Contacts& contacts, const std::string& nothing) const;

    CLI::App* mList = nullptr;
    CLI::App* mShow = nullptr;
    CLI::App* mFind = nullptr;
    AddressBookOptions mAddressBook;
    std::string mText;
    bool mJSON = false;
};

}  // namespace qvhost
