#pragma once

#include <string_view>

/// What the program says beside its result, on standard error. Everything that comes from outside (file names, card
/// text, a server's words) is made printable first.
namespace qvhost::Messages {

/// One message: what, where, and what to do. "qvcardscan: " goes before it.
void say(std::string_view message);

/// Several lines as they are, made printable, without the program's name before them.
void sayLines(std::string_view lines);

}  // namespace qvhost::Messages
