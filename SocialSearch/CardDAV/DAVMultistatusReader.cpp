#include "CardDAV/DAVMultistatusReader.h"

#include "Merging/EntryMeaning.h"
#include "QVPlatform/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr std::size_t kMostResources = 50'000;
constexpr long kOK = 200;

/// "HTTP/1.1 200 OK".
long statusOfLine(const std::string& line) {
    const std::size_t blank = line.find(' ');
    if (blank == std::string::npos) return 0;
    const auto status = qv::Text::integerValue(std::string_view(line).substr(blank + 1, 3));
    return static_cast<long>(std::clamp<std::int64_t>(status, 0, 999));
}

bool allowsWriting(std::string_view privilege) {
    constexpr std::array<std::string_view, 4> kPrivileges = {"D:all", "D:write", "D:write-content", "D:bind"};
    return std::find(kPrivileges.begin(), kPrivileges.end(), privilege) != kPrivileges.end();
}

/// Lets the properties that were found go over to the resource.
void takeOver(DAVResource& resource, DAVResource&& found) {
    const auto take = [](std::string& into, std::string& from) {
        if (!from.empty()) into = std::move(from);
    };
    take(resource.ETag, found.ETag);
    take(resource.contentType, found.contentType);
    take(resource.principal, found.principal);
    take(resource.home, found.home);
    if (found.card) resource.card = std::move(found.card);
    resource.isAddressBook |= found.isAddressBook;
    resource.isCollection |= found.isCollection;
    resource.tellsPrivileges |= found.tellsPrivileges;
    resource.isWritable |= found.isWritable;
}

}  // namespace

void DAVMultistatusReader::didStartElement(const std::string& elementName,
                                           const std::map<std::string, std::string>& attributes) {
    // Nothing more is looked at once it is clear what this is; the parser's own limits bound the rest.
    if (mIsHostile) return;
    mIsHostile = !mNames.open(elementName, attributes);
    if (mNames.depth() == 1) mIsMultistatus = mNames.inner() == "D:multistatus";
    mText.clear();
}

void DAVMultistatusReader::foundCharacters(std::string_view string) {
    if (!mIsHostile) mText += string;
}

void DAVMultistatusReader::didEndElement(const std::string&) {
    if (mIsHostile) return;
    const std::string_view name = mNames.inner();
    const std::string_view around = mNames.inner(1);
    if (around == "D:response") {
        endInResponse(name);
    } else if (around == "D:propstat" && name == "D:status") {
        mPropertiesStatus = statusOfLine(mText);
    } else if (around == "D:prop") {
        endProperty(name);
    } else if (mNames.inner(2) == "D:prop" || mNames.inner(3) == "D:prop") {
        endInProperty(name, around);
    } else if (name == "D:response") {
        endResponse();
    }
    mNames.close();
    mText.clear();
}

void DAVMultistatusReader::endInResponse(std::string_view name) {
    if (name == "D:href" && mResource.href.empty()) mResource.href = trimmed(mText);
    if (name == "D:status") mResource.status = statusOfLine(mText);
    if (name == "D:propstat") endPropstat();
}

void DAVMultistatusReader::endProperty(std::string_view name) {
    if (name == "D:getetag") mProperties.ETag = trimmed(mText);
    if (name == "D:getcontenttype") mProperties.contentType = trimmed(mText);
    if (name == "D:current-user-privilege-set") mProperties.tellsPrivileges = true;
    // Blanks are not taken off: a card's lines may begin with them.
    if (name == "C:address-data") mProperties.card = std::move(mText);
}

void DAVMultistatusReader::endInProperty(std::string_view name, std::string_view property) {
    if (property == "D:resourcetype") {
        mProperties.isAddressBook |= name == "C:addressbook";
        mProperties.isCollection |= name == "D:collection";
    } else if (name == "D:href" && property == "D:current-user-principal") {
        mProperties.principal = trimmed(mText);
    } else if (name == "D:href" && property == "C:addressbook-home-set" && mProperties.home.empty()) {
        mProperties.home = trimmed(mText);
    } else if (property == "D:privilege") {
        mProperties.isWritable |= allowsWriting(name);
    }
}

void DAVMultistatusReader::endPropstat() {
    const bool isFound = mPropertiesStatus == 0 || mPropertiesStatus == kOK;
    if (isFound) takeOver(mResource, std::move(mProperties));
    mProperties = DAVResource();
    mPropertiesStatus = 0;
}

void DAVMultistatusReader::endResponse() {
    if (mResources.size() == kMostResources) {
        mIsHostile = true;
        return;
    }
    mResources.push_back(std::exchange(mResource, DAVResource()));
}

void DAVMultistatusReader::parseErrorOccurred(const qv::Error&) {
    mIsHostile = true;
}
