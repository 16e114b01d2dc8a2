#include "Command/ServeCommand.h"

#include "Page/CardPile.h"
#include "Page/PageDesk.h"
#include "Page/PileReader.h"
#include "Page/PileSaver.h"
#include "Support/Messages.h"
#include "Support/StandardStreams.h"

#include <CLI/CLI.hpp>
#include <arpa/inet.h>

#include <charconv>
#include <chrono>
#include <cstdlib>
#include <utility>

namespace qvhost {
namespace {

constexpr const char* kFooter =
    "Examples:\n"
    "  qvcardscan serve\n"
    "  qvcardscan serve --port 8080 --language de --address-book ~/contacts\n"
    "\n"
    "Open the address that is printed in a browser on this machine; Ctrl-C ends the program. The key in the address "
    "is\n"
    "a new one each time, unless there is a --key-file. The pictures are gone when the program ends.\n"
    "\n"
    "Exit status: 0 ended as asked; 1 the port is taken; 2 wrong call; 3 no folder for the pictures or contacts.";

/// A card that is being read or saved when the program is asked to end gets this long.
constexpr std::chrono::seconds kFarewell{3};

ExitStatus fail(const Failure& failure) {
    Messages::say(failure.message);
    return failure.status;
}

std::string objectionToAddress(const std::string& address) {
    in6_addr room = {};
    const bool isNumber =
        ::inet_pton(AF_INET, address.c_str(), &room) == 1 || ::inet_pton(AF_INET6, address.c_str(), &room) == 1;
    return isNumber ? "" : "an address in numbers is needed here, such as 127.0.0.1 or 0.0.0.0.";
}

std::string objectionToPort(const std::string& text) {
    std::uint16_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isOne = error == std::errc() && end == text.data() + text.size();
    return isOne ? "" : "a number from 0 to 65535 is needed here.";
}

}  // namespace

CLI::App* ServeCommand::describe(CLI::App& program) {
    CLI::App* command = program.add_subcommand("serve", "Show a page in the browser for a pile of cards");
    command->footer(kFooter);
    command->add_option("--port", mPort, "Port of the page (default: one that is free)")
        ->type_name("N")
        ->check(objectionToPort);
    command->add_option("--listen", mListen, "Address to listen on; other than 127.0.0.1, others can reach the page")
        ->type_name("ADDRESS")
        ->check(objectionToAddress);
    command
        ->add_option("--key-file", mKeyFile,
                     std::string("File with a key for the page, so that its address stays the same (or set ") +
                         PageKey::kVariable + ")")
        ->type_name("F");
    mServer.describe(*command);
    command->option_defaults()->group("The address book");
    mAddressBook.describe(*command);
    command->option_defaults()->group("Options");
    return command;
}

ExitStatus ServeCommand::run() {
    const Result<PageKey> key = PageKey::choose(mKeyFile);
    if (!key) return fail(key.failure());
    const Result<std::unique_ptr<RecognitionServer>> recogniser = mServer.open();
    if (!recogniser) return fail(recogniser.failure());
    std::string error;
    const auto server = PageServer::listen(mListen, mPort, {}, error);
    if (!server) {
        const std::string port = mPort == 0 ? "" : ", port " + std::to_string(mPort);
        return fail({ExitStatus::Incomplete, "The page cannot be shown at " + mListen + port + ": " + error +
                                                 ". Choose another " + (mPort == 0 ? "--listen." : "--port.")});
    }
    Result<AddressBookPlace> place = mAddressBook.open(AddressBookOptions::Access::Saving);
    if (!place) return fail(place.failure());
    const Result<std::unique_ptr<PictureShelf>> shelf = PictureShelf::make();
    if (!shelf) return fail(shelf.failure());
    return serve(*server, *key, **shelf, **recogniser, std::move(*place));
}

ExitStatus ServeCommand::serve(PageServer& server, const PageKey& key, PictureShelf& shelf,
                               RecognitionServer& recogniser, AddressBookPlace place) {
    CardPile pile(shelf);
    PileReader reader(pile, recogniser, mServer.language());
    PileSaver saver(pile, std::move(place));
    PageDesk desk(PageGate(key, server.port(), isForNetwork()), pile, shelf, saver,
                  mServer.server()->count() > 0 ? recogniser.name() : "");
    if (isForNetwork())
        Messages::say("Others on the network can reach the page, and read along: nothing is encrypted.");
    Messages::say("Open this address in a browser; Ctrl-C ends the program.");
    const ExitStatus said = StandardStreams::writeResult(address(server, key) + "\n");
    if (said == ExitStatus::Done) server.run(desk);
    pile.stop();
    saver.stop();
    if (reader.hasEnded(kFarewell) && saver.hasEnded(kFarewell)) return said;
    // Whoever asked the program to end does not wait for a server that does not answer.
    shelf.clear();
    std::_Exit(static_cast<int>(said));
}

std::string ServeCommand::address(const PageServer& server, const PageKey& key) const {
    const std::string host = mListen.find(':') == std::string::npos ? mListen : "[" + mListen + "]";
    return "http://" + host + ":" + std::to_string(server.port()) + "/?key=" + key.text();
}

bool ServeCommand::isForNetwork() const {
    return !mListen.starts_with("127.") && mListen != "::1";
}

}  // namespace qvhost
