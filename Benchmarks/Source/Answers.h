#pragma once

#include <cstddef>
#include <string>

/// Answers of a recognition server, the ordinary one and hostile ones.
namespace benchmarksupport {

/// Of a card with a dozen fields.
std::string ordinaryAnswer();

/// So many items and nothing else.
std::string answerOfBareItems(std::size_t count);

/// So many items of the ordinary kind.
std::string answerOfItems(std::size_t count);

/// One field of a kind, its text so many bytes, each of which the parser gets as a piece of its own.
std::string answerInOneByteChunks(const std::string& type, std::size_t bytes);

}  // namespace benchmarksupport
