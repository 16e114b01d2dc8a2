#pragma once

#include <string>

/// A random UUID (RFC 9562, version 4) in lower case.
std::string newUUID();

/// Whether a text can name a file on any system, and a resource on any server, as it is.
bool isPlainName(const std::string& text);

/// Whether a card that cannot be read says somewhere that this is its UID.
bool mentionsUID(const std::string& bytes, const std::string& UID);
