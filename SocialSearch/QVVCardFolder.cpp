#include "QVSocialSearch/QVVCardFolder.h"

#include "Folder/CardFiles.h"
#include "Folder/CardSaver.h"
#include "QVSocialSearch/QVVCardProfile.h"

std::filesystem::path QVVCardFolder::fileWithUID(const std::string& UID) const {
    std::filesystem::path path;
    Problems problems;
    visitCards(mFolder, problems, [&](CardFile& file) {
        if (file.UID() == UID) path = file.file;
        return path.empty();
    });
    return path;
}

QVAddressBookSaveResult QVVCardFolder::saveProfile(const QVSocialProfile& profile) {
    return CardSaver(mFolder, profile, mWillReplace).save();
}

QVAddressBook::Profiles QVVCardFolder::profiles(std::optional<qv::Error>* error) {
    Profiles found;
    Problems problems;
    visitCards(mFolder, problems, [&](CardFile& file) {
        found.push_back(qv::profileOfCard(file.card, file.UID()));
        return true;
    });
    problems.report(error);
    return found;
}

QVAddressBook::Profiles QVVCardFolder::profilesWithEmailAddress(const std::string& address,
                                                                std::optional<qv::Error>* error) {
    Profiles found;
    Problems problems;
    visitCards(mFolder, problems, [&](CardFile& file) {
        if (qv::cardHasEmailAddress(file.card, address)) found.push_back(qv::profileOfCard(file.card, file.UID()));
        return true;
    });
    problems.report(error);
    return found;
}

std::shared_ptr<QVSocialProfile> QVVCardFolder::profileWithUID(const std::string& UID,
                                                               std::optional<qv::Error>* error) {
    std::shared_ptr<QVSocialProfile> found;
    Problems problems;
    visitCards(mFolder, problems, [&](CardFile& file) {
        if (file.UID() == UID) found = qv::profileOfCard(file.card, UID);
        return !found;
    });
    problems.report(error);
    return found;
}
