#pragma once

#include "QVPlatform/HTTPClient.h"
#include "QVSocialSearch/QVCardDAVAddressBook.h"
#include "Support/HTTPRequests.h"
#include "Support/ServerProcess.h"
#include "Support/TemporaryFolder.h"

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

/// The CardDAV servers that Debian has, each with one address book of its own.
namespace integration {

inline constexpr const char* kUser = "ada";
inline constexpr const char* kPassword = "Gehäuse 7: offen";

class RealServer {
  public:
    virtual ~RealServer() = default;
    RealServer(const RealServer&) = delete;
    RealServer& operator=(const RealServer&) = delete;

    /// "http://127.0.0.1:PORT", from where the address book is to be found.
    std::string root() const { return "http://127.0.0.1:" + std::to_string(mProcess->port()); }
    virtual std::string collection() const = 0;
    virtual QVCardDAVCredentials credentials() const { return {}; }

    std::unique_ptr<QVCardDAVAddressBook> addressBook() const {
        return std::make_unique<QVCardDAVAddressBook>(root(), credentials());
    }

    /// What any other client could do: the request as it is, with the user's password.
    qv::HTTPResponse send(const std::string& method, const std::string& address, const std::string& body = "",
                          const std::string& type = "text/vcard; charset=utf-8") const {
        qv::HTTPRequest request = testsupport::requestTo(address, method);
        request.headers = {{"Content-Type", type}, {"Authorization", authorization()}};
        if (authorization().empty()) request.headers.pop_back();
        if (!body.empty()) request.body = testsupport::dataOf(body);
        return testsupport::send(request);
    }

  protected:
    RealServer() = default;
    virtual std::string authorization() const { return ""; }

    testsupport::TemporaryFolder mFolder;
    std::unique_ptr<testsupport::ServerProcess> mProcess;
};

/// With user and password, and no address book before it is made.
class Radicale : public RealServer {
  public:
    Radicale() {
        mFolder.write("users", std::string(kUser) + ":" + kPassword + "\n");
        mProcess = std::make_unique<testsupport::ServerProcess>([this](int port) {
            mFolder.write("config", configuration(port));
            return testsupport::ServerCall{.program = "/usr/bin/python3",
                                           .arguments = {"-m", "radicale", "-C", (mFolder / "config").string()},
                                           .environment = {{"HOME", mFolder.path().string()}, {"LANG", "C.UTF-8"}},
                                           .log = mFolder / "log"};
        });
        const auto made =
            send("MKCOL", collection(),
                 "<?xml version=\"1.0\"?><mkcol xmlns=\"DAV:\" xmlns:C=\"urn:ietf:params:xml:ns:carddav\">"
                 "<set><prop><resourcetype><collection/><C:addressbook/></resourcetype></prop></set>"
                 "</mkcol>",
                 "application/xml; charset=utf-8");
        if (made.status != 201) throw std::runtime_error("Radicale makes no address book");
    }

    std::string collection() const override { return root() + "/ada/contacts/"; }
    QVCardDAVCredentials credentials() const override {
        return {.user = kUser, .password = kPassword, .token = std::nullopt};
    }

  private:
    std::string configuration(int port) const {
        return "[server]\nhosts = 127.0.0.1:" + std::to_string(port) +
               "\n[auth]\ntype = htpasswd\nhtpasswd_encryption = plain\ndelay = 0\nhtpasswd_filename = " +
               (mFolder / "users").string() + "\n[storage]\nfilesystem_folder = " + (mFolder / "cards").string() + "\n";
    }
    /// "ada:Gehäuse 7: offen".
    std::string authorization() const override { return "Basic YWRhOkdlaMOkdXNlIDc6IG9mZmVu"; }
};

/// Without passwords; it makes the address book itself.
class Xandikos : public RealServer {
  public:
    Xandikos() {
        mProcess = std::make_unique<testsupport::ServerProcess>([this](int port) {
            return testsupport::ServerCall{.program = "/usr/bin/xandikos",
                                           .arguments = {"-d", (mFolder / "cards").string(), "--defaults", "-l",
                                                         "127.0.0.1", "-p", std::to_string(port)},
                                           .environment = {{"HOME", mFolder.path().string()}, {"LANG", "C.UTF-8"}},
                                           .log = mFolder / "log"};
        });
    }
    std::string collection() const override { return root() + "/user/contacts/addressbook/"; }
};

}  // namespace integration
