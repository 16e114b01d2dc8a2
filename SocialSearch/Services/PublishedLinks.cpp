#include "Services/PublishedLinks.h"

#include "Links/NetworkLink.h"
#include "QVPlatform/Text.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

bool isHandleCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// Pages of the network itself, at the place where people's are.
bool isOwnPage(const std::string& segment) {
    constexpr std::array<std::string_view, 7> kOwn = {"hashtag", "home", "i", "intent", "login", "search", "share"};
    return std::find(kOwn.begin(), kOwn.end(), qv::Text::lowercased(segment)) != kOwn.end();
}

void takeHandle(const std::string& link, QVSocialProfile& profile) {
    // Some of the oldest handles are longer than today's 15 characters.
    constexpr std::size_t kLongest = 20;
    const std::string handle = handleOfLink(link);
    if (handle.empty() || handle.size() > kLongest || isOwnPage(handle) ||
        !std::all_of(handle.begin(), handle.end(), isHandleCharacter)) {
        return;
    }
    profile.mergeWithTwitterSet(
        std::make_shared<qv::OrderedSet<std::string>>(std::initializer_list<std::string>{handle}));
}

}  // namespace

void takePublishedLink(const std::string& link, QVSocialProfile& profile) {
    const std::string network = networkOfLink(link);
    if (network == "LINKEDIN" && !profile.profileURLLinkedInPublic()) profile.setProfileURLLinkedInPublic(link);
    if (network == "FACEBOOK" && !profile.profileURLFacebook()) profile.setProfileURLFacebook(link);
    if (network == "TWITTER") takeHandle(link, profile);
}
