#pragma once

#include "QVPlatform/URL.h"

#include <optional>
#include <string>

/// What addresses mean to a client of one server.

/// The address that a user gave, with https where it says nothing. Nothing, and why in `problem`, when it is no address
/// of a server, holds credentials (which would end up in texts), or would show them to everybody on the way.
std::optional<qv::URL> serverAddress(const std::string& text, bool allowsClearText, std::string& problem);

/// The same with "/" behind the path, as collections are called.
qv::URL asCollection(const qv::URL& url);

/// The path without escapes, so that two spellings of one place are the same.
std::string plainPath(const qv::URL& url);

/// Whether `member` is a resource right inside of the collection, by its path; dots cannot lead out of it.
bool isMember(const qv::URL& collection, const qv::URL& member);

/// Where a new card is put: named after its UID, escaped, or by a digest where a server could stumble over it.
qv::URL addressOfNewCard(const qv::URL& collection, const std::string& UID);

/// What stands for the UID of a card without one: the last segment without ".vcf".
std::string nameOfCard(const qv::URL& card);

/// Scheme, host and port, to be shown.
std::string hostOf(const qv::URL& url);
