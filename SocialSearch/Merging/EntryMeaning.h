#pragma once

#include "QVSocialSearch/QVSocialSearchTypes.h"

#include <string>
#include <string_view>

/// Whether there is anything but white space and line ends in a text.
bool isBlank(const QVString& text);

/// The text without white space and line ends at both ends.
std::string trimmed(std::string_view text);

/// What two addresses of one mailbox have in common: neither case nor the blanks around them count. Strictly the part
/// before the "@" may be case-sensitive; no mail server in use makes anything of it.
std::string meaningOfEmail(std::string_view address);

/// What two spellings of one handle have in common; empty when nothing is left.
std::string meaningOfHandle(std::string_view handle);
