#include "VCard/CardLinks.h"

#include "Links/NetworkLink.h"
#include "Merging/EntryMeaning.h"
#include "QVPlatform/Text.h"
#include "VCard/VCardEncoding.h"

#include <algorithm>
#include <vector>

namespace {

constexpr std::string_view kTwitterPage = "https://twitter.com/";

std::string linkOf(const QVVCardProperty& property) {
    return trimmed(property.text());
}

bool isOnTwitter(const QVVCardProperty& property) {
    return property.hasType("TWITTER") || capitals(property.parameter("SERVICE-TYPE").value_or("")) == "TWITTER";
}

std::string twitterHandleOf(const QVVCardProperty& property) {
    std::string link = linkOf(property);
    if (property.isNamed("X-TWITTER")) return link;
    if (networkOfLink(link) == "TWITTER") return handleOfLink(link);
    if (!isOnTwitter(property)) return "";
    for (const char* name : {"X-USER", "USERNAME"}) {
        if (const auto user = property.parameter(name)) return *user;
    }
    return link.find_first_of(":/") == std::string::npos ? link : "";
}

/// What may hold links, the ones that are meant for it first.
std::vector<const QVVCardProperty*> linkProperties(const QVVCard& card) {
    std::vector<const QVVCardProperty*> all;
    for (const char* name : {"X-SOCIALPROFILE", "SOCIALPROFILE", "X-TWITTER", "URL"}) {
        for (const QVVCardProperty* property : card.propertiesNamed(name))
            all.push_back(property);
    }
    return all;
}

const QVVCardProperty* pageOn(const QVVCard& card, std::string_view network) {
    for (const QVVCardProperty* property : linkProperties(card)) {
        if (networkOfLink(linkOf(*property)) == network) return property;
    }
    return nullptr;
}

QVHandleSet twitterHandles(const QVVCard& card) {
    auto handles = std::make_shared<qv::OrderedSet<std::string>>();
    for (const QVVCardProperty* property : linkProperties(card)) {
        if (const std::string handle = twitterHandleOf(*property); !isBlank(handle)) handles->insert(handle);
    }
    return handles;
}

QVVCardProperty socialProfile(const QVVCard& card, const std::string& type, const std::string& link) {
    QVVCardProperty property = QVVCardProperty::withValue(card.version(), "X-SOCIALPROFILE", escapedURI(link));
    property.parameters.push_back({.name = "TYPE", .values = {type}});
    return property;
}

/// A link to another network, or to none, is not the page that it was given for.
void writePage(QVVCard& card, const std::string& network, const QVString& link) {
    if (!link || networkOfLink(trimmed(*link)) != network) return;
    const std::string escaped = escapedURI(trimmed(*link));
    const QVVCardProperty* page = pageOn(card, network);
    if (page == nullptr) {
        card.addProperty(socialProfile(card, qv::Text::lowercased(network), trimmed(*link)));
    } else if (escapedURI(linkOf(*page)) != escaped) {
        card.replaceProperty(page, page->withPlainValue(escaped));
    }
}

}  // namespace

void readLinks(const QVVCard& card, QVSocialProfile& profile) {
    profile.mergeWithTwitterSet(twitterHandles(card));
    if (const QVVCardProperty* page = pageOn(card, "LINKEDIN")) profile.setProfileURLLinkedInPublic(linkOf(*page));
    if (const QVVCardProperty* page = pageOn(card, "FACEBOOK")) profile.setProfileURLFacebook(linkOf(*page));
}

void writeLinks(QVVCard& card, const QVSocialProfile& profile) {
    writePage(card, "LINKEDIN", profile.profileURLLinkedInPublic());
    writePage(card, "FACEBOOK", profile.profileURLFacebook());
    QVSocialProfile known;
    known.mergeWithTwitterSet(twitterHandles(card));
    const std::size_t count = known.twitterAccounts()->size();
    known.mergeWithTwitterSet(profile.twitterAccounts());
    const QVHandleSet handles = known.twitterAccounts();
    for (auto handle = std::next(handles->begin(), static_cast<std::ptrdiff_t>(count)); handle != handles->end();
         ++handle) {
        std::string name = trimmed(*handle);
        if (name.starts_with('@')) name.erase(0, 1);
        card.addProperty(socialProfile(card, "twitter", std::string(kTwitterPage) + escapedSegment(name)));
    }
}
