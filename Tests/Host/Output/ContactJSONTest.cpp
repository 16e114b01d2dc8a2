#include "Output/ContactJSON.h"
#include "QVCardScan/QVVeltoNoteGenerator.h"
#include "QVPlatform/MD5.h"
#include "Support/HostProgram.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::ordered_json;
using qvhost::contactJSON;

QVStringArray strings(std::vector<std::string> values) {
    return std::make_shared<std::vector<std::string>>(std::move(values));
}

TEST(ContactJSON, NoContactIsNull) {
    EXPECT_TRUE(contactJSON(nullptr).is_null());
}

TEST(ContactJSON, AnEmptyContactHasEveryKeyWithNull) {
    const ordered_json contact = contactJSON(std::make_shared<QVVeltoContact>());
    EXPECT_EQ(contact.size(), 20U);
    for (const auto& item : contact.items())
        EXPECT_TRUE(item.value().is_null()) << item.key();
}

TEST(ContactJSON, EmptyIsNotAbsent) {
    QVVeltoContact contact;
    contact.setFullName("");
    contact.setEmailFields(std::make_shared<qv::OrderedSet<std::shared_ptr<QVVeltoContactField>>>());
    contact.setResourceHashes(strings({}));
    const ordered_json json = contactJSON(std::make_shared<QVVeltoContact>(contact));
    EXPECT_EQ(json["fullName"], "");
    EXPECT_EQ(json["emailFields"], ordered_json::array());
    EXPECT_EQ(json["resourceHashes"], ordered_json::array());
}

TEST(ContactJSON, HoldsEntriesHandlesAndLinks) {
    const auto contact = std::make_shared<QVVeltoContact>();
    contact->setOrderedPhoneFields(std::make_shared<std::vector<std::shared_ptr<QVVeltoContactField>>>(
        std::vector{QVVeltoContactField::initWithLabel("Fax", "1"), QVVeltoContactField::initWithLabel({}, {})}));
    contact->setTwitterHandles(std::make_shared<qv::OrderedSet<std::string>>(qv::OrderedSet<std::string>{"b", "a"}));
    contact->setOrderedTwitterHandles(strings({"a", "b"}));
    contact->setURL("example.com");
    contact->setLinkedInProfileURL("https://li.example/a");
    const ordered_json json = contactJSON(contact);
    const ordered_json phones = ordered_json::parse(R"([{"label":"Fax","text":"1"},{"label":null,"text":null}])");
    EXPECT_EQ(json["orderedPhoneFields"], phones);
    EXPECT_EQ(json["twitterHandles"], ordered_json::array({"b", "a"}));
    EXPECT_EQ(json["orderedTwitterHandles"], ordered_json::array({"a", "b"}));
    EXPECT_EQ(json["URL"], "example.com");
    EXPECT_EQ(json["linkedInProfileURL"], "https://li.example/a");
}

TEST(ContactJSON, PicturesStandAsTheirHashes) {
    const auto picture = qv::Image::initWithContentsOfFile(testsupport::hostData("front.jpg"));
    const auto contact = std::make_shared<QVVeltoContact>();
    contact->setAvatar(picture);
    contact->setResources(std::make_shared<qv::OrderedSet<std::shared_ptr<qv::Image>>>(
        qv::OrderedSet<std::shared_ptr<qv::Image>>{picture}));
    const ordered_json json = contactJSON(contact);
    EXPECT_EQ(json["avatar"], QVVeltoNoteGenerator::lowerHexStringForDataHashFromNSImage(picture, "image/jpeg"));
    EXPECT_EQ(json["resources"], ordered_json::array({qv::lowerHexMD5(picture->encodedData())}));
}

}  // namespace
