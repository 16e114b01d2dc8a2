#include "QVSocialSearch/QVWebFingerProvider.h"

#include "Links/NetworkLink.h"
#include "QVPlatform/HTTPClient.h"
#include "QVPlatform/Log.h"
#include "QVPlatform/Text.h"
#include "QVSocialSearch/QVLinkFetcher.h"
#include "QVSocialSearch/QVVCardProfile.h"
#include "Services/LinkedCard.h"
#include "Services/PublishedLinks.h"
#include "Services/ServiceLimits.h"
#include "Services/ServiceLog.h"
#include "Services/ServicePicture.h"
#include "Services/ServiceRequest.h"
#include "Services/WebFingerAccount.h"
#include "Services/WebFingerAnswer.h"

#include <algorithm>
#include <utility>

namespace {

using Clock = QVSocialSearchProvider::Clock;

constexpr const char* kName = "WebFinger";

/// Where one account is asked about.
struct Question {
    qv::URL url;
    std::string domain;
    bool isAtChosenOrigin = false;
};

std::optional<Question> questionFor(const WebFingerAccount& account, const QVWebFingerOptions& options) {
    const bool isChosen = static_cast<bool>(options.originOfDomain);
    const std::string origin = isChosen ? options.originOfDomain(account.domain) : "https://" + account.domain;
    auto url = qv::URL::URLWithString(origin + webFingerQuery(account));
    if (!url) return std::nullopt;
    return Question{*std::move(url), account.domain, isChosen};
}

qv::HTTPRequest requestFor(const Question& question, Clock::time_point end) {
    const bool isRestricted = !QVLinkFetcher::policy().allowsPrivateAddresses;
    auto request = serviceRequest(question.url, "application/jrd+json, application/json", end);
    request.followsRedirects = true;
    request.onlyPublicAddresses = isRestricted && !question.isAtChosenOrigin;
    request.redirectsOnlyToPublicAddresses = isRestricted;
    return request;
}

std::optional<WebFingerAnswer> ask(const Question& question, Clock::time_point end) {
    const auto response = qv::HTTPClient::sendSynchronousRequest(requestFor(question, end));
    constexpr long kOK = 200;
    constexpr long kNotFound = 404;
    if (response.error || (response.status != kOK && response.status != kNotFound)) logServiceFailure(kName, response);
    if (response.error || response.status != kOK) return std::nullopt;
    auto answer = readWebFingerAnswer(response.body.value_or(qv::Data()));
    if (!answer) qv::Log::write("<WARNING> The answer of %@ cannot be read", kName);
    return answer;
}

/// Others must not speak for the domain's people.
bool isOwnLink(const std::string& link, const Question& question) {
    const auto url = qv::URL::URLWithString(link);
    if (!url) return false;
    const std::string host = qv::Text::lowercased(url->host());
    return isHostInDomain(host, question.domain) || (question.isAtChosenOrigin && host == question.url.host());
}

std::shared_ptr<QVSocialProfile> profileOfFirstCard(const std::vector<std::string>& cards, const Question& question,
                                                    Clock::time_point end) {
    const auto own =
        std::find_if(cards.begin(), cards.end(), [&](const auto& link) { return isOwnLink(link, question); });
    const auto bytes = own == cards.end() ? std::nullopt : QVLinkFetcher::contentsOfLink(*own, end);
    return bytes ? profileOfLinkedCard(*bytes) : nullptr;
}

std::shared_ptr<QVSocialProfile> profileOf(const WebFingerAnswer& answer, const Question& question,
                                           Clock::time_point end) {
    auto profile = profileOfFirstCard(answer.cards, question, end);
    if (!profile) profile = std::make_shared<QVSocialProfile>();
    profile->setProfileType(QVSocialProfileSourceWebFinger);
    for (const std::string& page : answer.pages)
        takePublishedLink(page, *profile);
    if (auto picture = pictureAtLink(answer.picture, end)) profile->setAddressBookAvatarData(std::move(picture));
    return qv::profileHasContents(*profile) ? profile : nullptr;
}

}  // namespace

QVWebFingerProvider::QVWebFingerProvider(QVWebFingerOptions options) : mOptions(std::move(options)) {
}

std::string QVWebFingerProvider::name() const {
    return kName;
}

std::shared_ptr<QVSocialProfile> QVWebFingerProvider::profileForRequest(const QVSocialSearchRequest& request,
                                                                        Clock::time_point deadline) {
    const auto end = endOfRequests(deadline);
    const auto account = accountOfAddress(request.emailAddress().value_or(""));
    if (!account || Clock::now() >= end) return nullptr;
    const auto question = questionFor(*account, mOptions);
    if (!question) return nullptr;
    const auto answer = ask(*question, end);
    return answer ? profileOf(*answer, *question, end) : nullptr;
}
