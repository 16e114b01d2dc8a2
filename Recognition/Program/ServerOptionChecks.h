#pragma once

#include "Server/HTTPServer.h"

#include <filesystem>
#include <string>

namespace qv::recognition {

/// Why a text is no port; empty when it is one.
std::string objectionToPort(const std::string& text);

/// Why nothing can be kept in a folder, which is made when it is not there; empty when something can.
std::string objectionToDebugFolder(const std::filesystem::path& folder);

/// What there is to fear from how the server is to listen; empty when nothing is.
std::string warningAbout(const ServerOptions& options);

}  // namespace qv::recognition
