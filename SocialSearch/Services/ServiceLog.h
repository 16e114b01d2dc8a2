#pragma once

#include "QVPlatform/HTTPClient.h"

#include <string_view>

/// Logs why a service did not answer: its status, or what went wrong on the way. Never who was asked for.
void logServiceFailure(std::string_view service, const qv::HTTPResponse& response);
