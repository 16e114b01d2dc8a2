#include "Output/ContactJSON.h"

#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "QVPlatform/MD5.h"

#include <nlohmann/json.hpp>

namespace qvhost {
namespace {

/// For a set and for an array of entries.
template <typename Entries>
JSON::Value entriesJSON(const Entries& entries) {
    if (!entries) return nullptr;
    JSON::Value list = JSON::Value::array();
    for (const auto& entry : *entries)
        list.push_back({{"label", JSON::from(entry->label())}, {"text", JSON::from(entry->text())}});
    return list;
}

JSON::Value avatarJSON(const std::shared_ptr<qv::Image>& avatar) {
    if (!avatar) return nullptr;
    return QVVeltoNoteGenerator::lowerHexStringForDataHashFromNSImage(avatar, "image/jpeg");
}

JSON::Value resourcesJSON(const QVImageSet& resources) {
    if (!resources) return nullptr;
    JSON::Value list = JSON::Value::array();
    for (const auto& image : *resources)
        list.push_back(qv::lowerHexMD5(image->encodedData()));
    return list;
}

}  // namespace

JSON::Value contactJSON(const std::shared_ptr<QVVeltoContact>& contact) {
    if (!contact) return nullptr;
    return {
        {"fullName", JSON::from(contact->fullName())},
        {"emailFields", entriesJSON(contact->emailFields())},
        {"phoneFields", entriesJSON(contact->phoneFields())},
        {"avatar", avatarJSON(contact->avatar())},
        {"resources", resourcesJSON(contact->resources())},
        {"resourceHashes", JSON::from(contact->resourceHashes())},
        {"twitterHandles", JSON::from(contact->twitterHandles())},
        {"weiboHandles", JSON::from(contact->weiboHandles())},
        {"jobTitle", JSON::from(contact->jobTitle())},
        {"company", JSON::from(contact->company())},
        {"URL", JSON::from(contact->URL())},
        {"address", JSON::from(contact->address())},
        {"linkedInProfileURL", JSON::from(contact->linkedInProfileURL())},
        {"facebookProfileURL", JSON::from(contact->facebookProfileURL())},
        {"orderedEmailFields", entriesJSON(contact->orderedEmailFields())},
        {"orderedPhoneFields", entriesJSON(contact->orderedPhoneFields())},
        {"orderedTwitterHandles", JSON::from(contact->orderedTwitterHandles())},
        {"orderedWeiboHandles", JSON::from(contact->orderedWeiboHandles())},
        {"profileImageQVURLString", JSON::from(contact->profileImageQVURLString())},
        {"cardImageQVURLStrings", JSON::from(contact->cardImageQVURLStrings())},
    };
}

}  // namespace qvhost
