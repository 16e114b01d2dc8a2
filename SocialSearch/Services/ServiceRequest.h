#pragma once

#include "QVPlatform/HTTPClient.h"
#include "QVSocialSearch/QVSocialSearchProvider.h"

#include <string>

/// A question to a service: it ends at `end`, and takes no larger answer than one that describes a person.
qv::HTTPRequest serviceRequest(qv::URL url, std::string mediaTypes, QVSocialSearchProvider::Clock::time_point end);
