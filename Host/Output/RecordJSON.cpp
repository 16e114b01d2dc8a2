#include "Output/RecordJSON.h"

#include "QVPlatform/Image.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace qvhost {
namespace {

JSON::Value entryJSON(const QVString& label, const std::string& text) {
    return {{"label", JSON::from(label)}, {"text", text}};
}

JSON::Value emailsJSON(const QVSocialProfile& record) {
    JSON::Value list = JSON::Value::array();
    for (const auto& email : record.emailAddresses())
        list.push_back(entryJSON(email->label(), email->address()));
    return list;
}

JSON::Value phonesJSON(const QVSocialProfile& record) {
    JSON::Value list = JSON::Value::array();
    for (const auto& phone : record.phoneNumbers())
        list.push_back(entryJSON(phone->type(), phone->number()));
    return list;
}

JSON::Value addressesJSON(const QVSocialProfile& record) {
    JSON::Value list = JSON::Value::array();
    for (const auto& address : record.addressList())
        list.push_back(entryJSON(address->label(), address->formattedAddress()));
    return list;
}

JSON::Value pictureJSON(const std::optional<qv::Data>& picture) {
    if (!picture) return nullptr;
    const qv::Size size = qv::Image::initWithData(*picture)->size();
    return {{"width", std::lround(size.width)}, {"height", std::lround(size.height)}, {"bytes", picture->size()}};
}

}  // namespace

JSON::Value recordJSON(const ShelvedContact& contact) {
    const QVSocialProfile& record = *contact.record;
    return {
        {"uid", contact.UID},
        {"fullName", JSON::from(record.formattedName())},
        {"jobTitle", JSON::from(record.jobTitle())},
        {"company", JSON::from(record.company())},
        {"emailFields", emailsJSON(record)},
        {"phoneFields", phonesJSON(record)},
        {"twitterHandles", JSON::from(record.twitterAccounts())},
        {"addresses", addressesJSON(record)},
        {"linkedInProfileURL", JSON::from(record.profileURLLinkedInPublic())},
        {"facebookProfileURL", JSON::from(record.profileURLFacebook())},
        {"picture", pictureJSON(record.addressBookAvatarData())},
    };
}

JSON::Value recordsJSON(const ContactsShelf::Contacts& contacts) {
    JSON::Value list = JSON::Value::array();
    for (const ShelvedContact* contact : contacts)
        list.push_back(recordJSON(*contact));
    return list;
}

}  // namespace qvhost
