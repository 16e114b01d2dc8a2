#include "Program/ServerOptionChecks.h"

#include <boost/asio/ip/address.hpp>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <system_error>

namespace qv::recognition {
namespace {

/// Whether others may reach it; what is no address reaches nobody.
bool isOpenToOthers(const std::string& text) {
    boost::system::error_code error;
    const auto address = boost::asio::ip::make_address(text, error);
    if (error) return false;
    if (address.is_v6() && address.to_v6().is_v4_mapped())
        return !boost::asio::ip::make_address_v4(boost::asio::ip::v4_mapped, address.to_v6()).is_loopback();
    return !address.is_loopback();
}

}  // namespace

std::string objectionToPort(const std::string& text) {
    unsigned port = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (error == std::errc() && end == text.data() + text.size() && port <= 65535) return "";
    return "\"" + text + "\" is no port. Give a number from 1 to 65535, or 0 for the system's choice.";
}

std::string objectionToDebugFolder(const std::filesystem::path& folder) {
    const std::string start = "--debug-dir: \"" + folder.string() + "\" ";
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (std::filesystem::exists(folder) && !std::filesystem::is_directory(folder))
        return start + "is a file. Name a folder.";
    if (error) return start + "cannot be made: " + error.message() + ". Name another folder.";
    std::string probe = (folder / "write-XXXXXX").string();
    const int file = ::mkstemp(probe.data());
    if (file < 0)
        return start + "cannot be written to: " + std::system_category().message(errno) + ". Name another folder.";
    ::close(file);
    ::unlink(probe.c_str());
    return "";
}

std::string warningAbout(const ServerOptions& options) {
    if (!options.token.empty() || !isOpenToOthers(options.address)) return "";
    return "Warning: whoever reaches " + options.address +
           " may have cards read here, because there is no token. Give one with --token-file, or leave --listen out.";
}

}  // namespace qv::recognition
