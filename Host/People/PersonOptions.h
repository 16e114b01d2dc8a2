#pragma once

#include "People/AddressBookOptions.h"
#include "People/PersonSteps.h"
#include "People/SearchServices.h"
#include "Support/Result.h"

#include <memory>
#include <optional>
#include <string>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace qvhost {

/// The options that are about the person on the card.
class PersonOptions {
  public:
    /// `skipNote` is the option that none of them goes with, because without a note there is no contact; null where
    /// there is no such option.
    void describe(CLI::App& command, CLI::Option* skipNote);

    /// What has to be done; null when nothing was asked for. Fails when it cannot be.
    Result<std::unique_ptr<PersonSteps>> open() const;

  private:
    Result<PersonSteps::Plan> plan() const;
    std::optional<Failure> planAddressBook(PersonSteps::Plan& plan) const;
    std::optional<Failure> planSearch(PersonSteps::Plan& plan) const;

    bool mSearch = false;
    bool mSave = false;
    std::optional<std::string> mContacts;
    std::optional<std::string> mSearchKeyFile;
    SearchServices mServices;
    AddressBookOptions mAddressBook;
};

}  // namespace qvhost
