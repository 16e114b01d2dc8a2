#include "Services/WebFingerAnswer.h"

#include "QVPlatform/JSON.h"
#include "QVPlatform/Text.h"
#include "Services/ServiceLimits.h"
#include "Services/ServiceText.h"

#include <algorithm>

namespace {

constexpr const char* kPage = "http://webfinger.net/rel/profile-page";
constexpr const char* kPicture = "http://webfinger.net/rel/avatar";

/// A media type without its parameters.
std::string mediaTypeOf(const qv::JSON& link) {
    const std::string type = qv::Text::lowercased(lineOf(link.member("type")).value_or(""));
    return type.substr(0, type.find_first_of("; "));
}

bool isCard(const qv::JSON& link, const std::string& relation) {
    const std::string type = mediaTypeOf(link);
    return qv::Text::lowercased(relation) == "vcard" || type == "text/vcard" || type == "text/x-vcard";
}

void takeLink(const qv::JSON& link, WebFingerAnswer& answer) {
    const QVString target = lineOf(link.member("href"));
    if (!target) return;
    const std::string relation = lineOf(link.member("rel")).value_or("");
    if (isCard(link, relation)) {
        answer.cards.push_back(*target);
    } else if (relation == kPage) {
        answer.pages.push_back(*target);
    } else if (relation == kPicture && !answer.picture) {
        answer.picture = target;
    }
}

}  // namespace

std::optional<WebFingerAnswer> readWebFingerAnswer(const qv::Data& text) {
    const auto object = qv::JSON::read(text);
    if (!object || !object->isObject()) return std::nullopt;
    WebFingerAnswer answer;
    auto links = object->member("links").elements();
    links.resize(std::min(links.size(), kMostLinks));
    for (const qv::JSON& link : links)
        takeLink(link, answer);
    return answer;
}
