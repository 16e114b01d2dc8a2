#include "People/PersonOptions.h"

#include "Support/Secrets.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <utility>

namespace qvhost {
namespace {

constexpr const char* kKeyVariable = "QVCARDSCAN_SEARCH_KEY";
constexpr const char* kSecretVariable = "QVCARDSCAN_SEARCH_SECRET";
/// The library searches only with a key and a secret, and the search that comes with it does not look at them.
constexpr const char* kLocal = "local";

std::string objectionToFolder(const std::string& folder) {
    std::error_code ignored;
    return std::filesystem::is_directory(folder, ignored) ? "" : "a folder of vCards is needed here.";
}

}  // namespace

void PersonOptions::describe(CLI::App& command, CLI::Option* skipNote) {
    command.option_defaults()->group("The person on the card");
    CLI::Option* search = command.add_flag("--search", mSearch, "Look the person up by e-mail address");
    command.add_option("--search-key-file", mSearchKeyFile, "Its key and secret (or QVCARDSCAN_SEARCH_KEY, _SECRET)")
        ->type_name("F")
        ->needs(search);
    mServices.describe(command, *search);
    CLI::Option* save = command.add_flag("--save", mSave, "Save the contact in the address book");
    CLI::Option* contacts = command.add_option("--contacts", mContacts, "Folder of vCards to merge the card with");
    contacts->type_name("DIR")->check(objectionToFolder);
    mAddressBook.describe(command);
    for (CLI::Option* option : {search, save, contacts}) {
        if (skipNote != nullptr) skipNote->excludes(option);
    }
    command.option_defaults()->group("Options");
}

Result<std::unique_ptr<PersonSteps>> PersonOptions::open() const {
    Result<PersonSteps::Plan> wanted = plan();
    if (!wanted) return wanted.failure();
    if (!mSearch && !mSave && !mContacts) return std::unique_ptr<PersonSteps>();
    return std::make_unique<PersonSteps>(std::move(*wanted));
}

Result<PersonSteps::Plan> PersonOptions::plan() const {
    PersonSteps::Plan plan;
    if (mContacts) plan.known = AddressBookPlace::folder(*mContacts);
    plan.saves = mSave;
    if (auto failure = planAddressBook(plan)) return *failure;
    if (auto failure = planSearch(plan)) return *failure;
    return plan;
}

std::optional<Failure> PersonOptions::planAddressBook(PersonSteps::Plan& plan) const {
    if (!mSearch && !mSave) {
        if (!mAddressBook.areGiven()) return std::nullopt;
        return Failure{ExitStatus::WrongCall, "An address book is only used with --search or --save. Add one of them."};
    }
    const auto access = mSave ? AddressBookOptions::Access::Saving : AddressBookOptions::Access::Reading;
    Result<AddressBookPlace> place = mAddressBook.open(access, /*standard=*/mContacts);
    if (!place) return place.failure();
    plan.addressBook = std::move(*place);
    return std::nullopt;
}

std::optional<Failure> PersonOptions::planSearch(PersonSteps::Plan& plan) const {
    if (!mSearch) return std::nullopt;
    const auto given = Secrets::read(
        {mSearchKeyFile, {kKeyVariable, kSecretVariable}, "the key on one line and the secret on the next"});
    if (!given) return given.failure();
    plan.searchKey =
        *given ? std::pair((**given)[0], (**given)[1]) : std::pair(std::string(kLocal), std::string(kLocal));
    Result<QVSocialSearchManager::Providers> services = mServices.open();
    if (!services) return services.failure();
    plan.services = std::move(*services);
    return std::nullopt;
}

}  // namespace qvhost
