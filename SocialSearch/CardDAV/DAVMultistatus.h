#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What one resource in a multi-status answer says of itself. Properties that the server does not have are empty.
struct DAVResource {
    /// As the server wrote it.
    std::string href;
    /// The status of the resource as a whole; 0 when only its properties have one.
    long status = 0;
    std::string ETag;
    std::string contentType;
    /// "address-data"; absent when it was not asked for or not found.
    std::optional<std::string> card;
    bool isAddressBook = false;
    bool isCollection = false;
    /// References of "current-user-principal" and "addressbook-home-set".
    std::string principal;
    std::string home;
    bool tellsPrivileges = false;
    bool isWritable = false;
};

/// Reads a multi-status answer (RFC 4918, 13; RFC 6352). Nothing when the text is no such answer, or one that no server
/// would give: more than 50 000 resources, or elements nested beyond reason.
std::optional<std::vector<DAVResource>> resourcesOfMultistatus(std::string_view text);
