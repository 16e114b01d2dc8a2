#include "Command/ContactsCommand.h"

#include "Output/ContactList.h"
#include "Output/ContactTable.h"
#include "Output/RecordJSON.h"
#include "Support/Messages.h"
#include "Support/StandardStreams.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace qvhost {
namespace {

constexpr const char* kFooter =
    "Examples:\n"
    "  qvcardscan contacts list\n"
    "  qvcardscan contacts find hallworth --address-book ~/contacts\n"
    "  qvcardscan contacts show ada@example.com --json\n"
    "\n"
    "Exit status: 0 done; 1 no such contact, or something could not be read; 2 wrong call; 3 result not written.";

std::string objectionToEmpty(const std::string& text) {
    return text.empty() ? "a text is needed here, not an empty one." : "";
}

ExitStatus fail(const Failure& failure) {
    Messages::say(failure.message);
    return failure.status;
}

ExitStatus worst(ExitStatus one, ExitStatus other) {
    return std::max(one, other);
}

}  // namespace

CLI::App* ContactsCommand::describe(CLI::App& program) {
    CLI::App* command = program.add_subcommand("contacts", "List, show or find contacts of the address book");
    command->require_subcommand(1);
    command->footer(kFooter);
    mList = add(*command, "list", "List all contacts");
    mShow = add(*command, "show", "Show one contact with all that is known");
    mShow->add_option("CONTACT", mText, "UID or its beginning, e-mail address, or whole name")
        ->required()
        ->type_name("")
        ->check(objectionToEmpty);
    mFind = add(*command, "find", "List the contacts in which a text occurs, in any case of letters");
    mFind->add_option("TEXT", mText, "Part of a name, title, company, address or number")
        ->required()
        ->type_name("")
        ->check(objectionToEmpty);
    return command;
}

CLI::App* ContactsCommand::add(CLI::App& command, const char* name, const char* description) {
    CLI::App* action = command.add_subcommand(name, description);
    action->fallthrough();
    action->footer(kFooter);
    action->add_flag("--json", mJSON, "Print JSON instead of the table");
    mAddressBook.describe(*action);
    return action;
}

ExitStatus ContactsCommand::run() {
    const Result<AddressBookPlace> place = mAddressBook.open(AddressBookOptions::Access::Reading);
    if (!place) return fail(place.failure());
    const ContactsShelf shelf = ContactsShelf::read(*place);
    if (shelf.problem()) Messages::say(*shelf.problem());
    // Nothing is said of contacts that could not be looked at.
    if (shelf.problem() && shelf.all().empty()) return ExitStatus::Incomplete;
    const ExitStatus status = shelf.problem() ? ExitStatus::Incomplete : ExitStatus::Done;
    if (mList->parsed()) return worst(status, list(shelf));
    return worst(status, mShow->parsed() ? show(shelf) : find(shelf));
}

ExitStatus ContactsCommand::list(const ContactsShelf& shelf) const {
    return print(shelf.all(), "There are no contacts.");
}

ExitStatus ContactsCommand::find(const ContactsShelf& shelf) const {
    const auto found = shelf.containing(mText);
    const ExitStatus output = print(found, "There is no contact with \"" + mText + "\".");
    return worst(output, found.empty() ? ExitStatus::Incomplete : ExitStatus::Done);
}

ExitStatus ContactsCommand::show(const ContactsShelf& shelf) const {
    const auto named = shelf.named(mText);
    if (named.size() == 1)
        return StandardStreams::writeResult(mJSON ? JSON::text(recordJSON(*named.front()))
                                                  : recordTable(*named.front()));
    if (named.empty()) {
        return fail({ExitStatus::Incomplete,
                     "There is no contact \"" + mText + "\". Look for one with: qvcardscan contacts find TEXT"});
    }
    Messages::say("Several contacts are meant by \"" + mText + "\". Name one by the beginning of its UID:");
    Messages::sayLines(contactList(named));
    return ExitStatus::Incomplete;
}

ExitStatus ContactsCommand::print(const ContactsShelf::Contacts& contacts, const std::string& nothing) const {
    if (mJSON) return StandardStreams::writeResult(JSON::text(recordsJSON(contacts)));
    if (!contacts.empty()) return StandardStreams::writeResult(contactList(contacts));
    Messages::say(nothing);
    return ExitStatus::Done;
}

}  // namespace qvhost
