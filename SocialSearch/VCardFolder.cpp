#include "QVSocialSearch/VCardFolder.h"

#include "Folder/CardFiles.h"
#include "Folder/CardSaver.h"
#include "QVSocialSearch/VCardProfile.h"

namespace {

void report(const Problems& problems, std::optional<qv::Error>* error) {
    if (error != nullptr) *error = problems.error();
}

}  // namespace

std::filesystem::path VCardFolder::fileWithUID(const std::string& UID) const {
    std::filesystem::path path;
    Problems problems;
    visitCards(mFolder, problems, [&](CardFile& file) {
        if (file.UID() == UID) path = file.file;
        return path.empty();
    });
    return path;
}

QVAddressBookSaveResult VCardFolder::saveProfile(const QVSocialProfile& profile) {
    return CardSaver(mFolder, profile, mWillReplace).save();
}

QVAddressBook::Profiles VCardFolder::profiles(std::optional<qv::Error>* error) {
    Profiles found;
    Problems problems;
    visitCards(mFolder, problems, [&](CardFile& file) {
        found.push_back(profileOfCard(file.card, file.UID()));
        return true;
    });
    report(problems, error);
    return found;
}

QVAddressBook::Profiles VCardFolder::profilesWithEmailAddress(const std::string& address,
                                                              std::optional<qv::Error>* error) {
    Profiles found;
    Problems problems;
    visitCards(mFolder, problems, [&](CardFile& file) {
        if (cardHasEmailAddress(file.card, address)) found.push_back(profileOfCard(file.card, file.UID()));
        return true;
    });
    report(problems, error);
    return found;
}

std::shared_ptr<QVSocialProfile> VCardFolder::profileWithUID(const std::string& UID, std::optional<qv::Error>* error) {
    std::shared_ptr<QVSocialProfile> found;
    Problems problems;
    visitCards(mFolder, problems, [&](CardFile& file) {
        if (file.UID() == UID) found = profileOfCard(file.card, UID);
        return !found;
    });
    report(problems, error);
    return found;
}
