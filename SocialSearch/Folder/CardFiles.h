#pragma once

#include "AddressBook/AddressBookProblems.h"
#include "Folder/FolderFile.h"
#include "QVSocialSearch/QVVCard.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// A card and the file it was read from.
struct CardFile {
    std::filesystem::path file;
    std::string bytes;
    mode_t mode = 0600;
    QVVCard card;

    /// The card's UID, or what stands for it.
    std::string UID() const;
};

/// The cards' files in the order of their names; nothing when the folder cannot be read.
std::optional<std::vector<std::filesystem::path>> filesOfCards(const std::filesystem::path& folder);

/// Reads one card. Nothing when it is gone (no problem then) or cannot be read.
std::optional<CardFile> readCardFile(const std::filesystem::path& file, Problems& problems);

/// Shows every card that can be read to `visit` until it says that it has seen enough.
void visitCards(const std::filesystem::path& folder, Problems& problems, const std::function<bool(CardFile&)>& visit);
