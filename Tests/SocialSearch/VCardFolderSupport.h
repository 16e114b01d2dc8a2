#pragma once

#include "QVSocialSearch/QVSocialProfile.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

/// What the tests of the folder of cards share.
namespace vcardtest {

inline void addEmail(QVSocialProfile& profile, const std::string& address) {
    auto set = std::make_shared<qv::OrderedSet<std::shared_ptr<const QVEmail>>>();
    set->insert(QVEmail::emailWithLabel(std::nullopt, address));
    profile.mergeWithEmailSet(set);
}

inline QVSocialProfile profileWithEmail(const std::string& name, const std::string& address) {
    QVSocialProfile profile;
    profile.setFormattedName(name);
    addEmail(profile, address);
    return profile;
}

/// A profile that stands for a record which may not be there yet.
inline QVSocialProfile recordWithEmail(const std::string& UID, const std::string& address) {
    QVSocialProfile profile = profileWithEmail("Ada Example", address);
    profile.setProfileType(QVSocialProfileSourceAddressBook);
    profile.setAddressBookUID(UID);
    return profile;
}

inline std::vector<std::string> filesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace vcardtest
