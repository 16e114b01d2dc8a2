#pragma once

#include "QVCardScan/QVCardScanTypes.h"
#include "QVPlatform/Error.h"

#include <optional>
#include <string>

/// Errors of a response in words.
namespace qvhost::ErrorText {

/// The lower-level error that caused this one, if it carries any.
std::optional<qv::Error> underlying(const qv::Error& error);

/// The explanation that a platform error carries.
QVString explanation(const qv::Error& error);

/// What happened, where (`server` in words), and what to do.
std::string message(const qv::Error& error, const std::string& server);

}  // namespace qvhost::ErrorText
