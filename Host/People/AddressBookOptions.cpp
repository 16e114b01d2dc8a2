#include "People/AddressBookOptions.h"

#include "Support/Messages.h"
#include "Support/Secrets.h"
#include "Support/WebAddress.h"

#include <CLI/CLI.hpp>

#include <cstdlib>
#include <system_error>

namespace qvhost {
namespace {

namespace fs = std::filesystem;

constexpr const char* kUserVariable = "QVCARDSCAN_CARDDAV_USER";
constexpr const char* kPasswordVariable = "QVCARDSCAN_CARDDAV_PASSWORD";

std::string objectionToServer(const std::string& url) {
    return WebAddress::objectionTo(url, "https://dav.example.com/", "put them into a file for --carddav-login-file");
}

std::string objectionToEmpty(const std::string& text) {
    return text.empty() ? "a name is needed here, not an empty text." : "";
}

/// Where a user's data lies by the rules of the XDG base directories.
std::optional<fs::path> ownFolder() {
    const char* data = std::getenv("XDG_DATA_HOME");
    if (data != nullptr && fs::path(data).is_absolute()) return fs::path(data) / "qvcardscan" / "contacts";
    const char* home = std::getenv("HOME");
    if (home == nullptr || !fs::path(home).is_absolute()) return std::nullopt;
    return fs::path(home) / ".local" / "share" / "qvcardscan" / "contacts";
}

Failure cannotBeUsed(const fs::path& folder, ExitStatus status, const std::error_code& error) {
    return {status, "The address book \"" + folder.string() + "\" cannot be used: " + error.message() +
                        ". Choose another with --address-book."};
}

/// Missing folders are made when something is to be saved.
std::optional<Failure> prepare(const fs::path& folder, AddressBookOptions::Access access) {
    const bool saves = access == AddressBookOptions::Access::Saving;
    std::error_code error;
    if (saves) fs::create_directories(folder, error);
    const bool isFolder = !error && fs::is_directory(folder, error);
    if (!error && !isFolder) error = std::make_error_code(std::errc::not_a_directory);
    if (!error) return std::nullopt;
    return cannotBeUsed(folder, saves ? ExitStatus::NotWritten : ExitStatus::WrongCall, error);
}

Result<AddressBookPlace> openFolder(const fs::path& folder, AddressBookOptions::Access access) {
    if (const auto failure = prepare(folder, access)) return *failure;
    return AddressBookPlace::folder(folder);
}

Result<AddressBookPlace> openOwnFolder(AddressBookOptions::Access access) {
    const std::optional<fs::path> folder = ownFolder();
    if (!folder) {
        return Failure{ExitStatus::WrongCall,
                       "There is no home folder to keep the address book in. Name a folder with --address-book."};
    }
    Messages::say("The address book is the folder \"" + folder->string() + "\" (--address-book chooses another).");
    std::error_code error;
    if (access == AddressBookOptions::Access::Saving || fs::exists(*folder, error)) return openFolder(*folder, access);
    AddressBookPlace nothingYet = AddressBookPlace::folder(*folder);
    nothingYet.book.reset();
    return nothingYet;
}

}  // namespace

void AddressBookOptions::describe(CLI::App& command) {
    auto* folder = command.add_option("--address-book", mFolder, "Folder of vCards (default: in your ~/.local/share)");
    folder->type_name("DIR")->check(objectionToEmpty);
    auto* server = command.add_option("--carddav", mServer, "CardDAV server that is the address book instead");
    server->type_name("URL")->check(objectionToServer)->excludes(folder);
    command.add_option("--carddav-login-file", mLoginFile, "Its user and password (or QVCARDSCAN_CARDDAV_USER, …)")
        ->type_name("F")
        ->needs(server);
}

Result<AddressBookPlace> AddressBookOptions::open(Access access, const std::optional<std::string>& standard) const {
    if (mServer) return openServer();
    if (mFolder) return openFolder(*mFolder, access);
    if (standard) return openFolder(*standard, access);
    return openOwnFolder(access);
}

Result<AddressBookPlace> AddressBookOptions::openServer() const {
    const auto login = Secrets::read(
        {mLoginFile, {kUserVariable, kPasswordVariable}, "the user name on one line and the password on the next"});
    if (!login) return login.failure();
    QVCardDAVCredentials credentials;
    if (*login) {
        credentials.user = (**login)[0];
        credentials.password = (**login)[1];
    }
    return AddressBookPlace::server(*mServer, credentials);
}

}  // namespace qvhost
