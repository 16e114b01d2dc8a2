#include "QVSocialSearch/QVGravatarProvider.h"

#include "Merging/EntryMeaning.h"
#include "QVPlatform/HTTPClient.h"
#include "QVPlatform/Log.h"
#include "QVPlatform/SHA256.h"
#include "QVSocialSearch/QVVCardProfile.h"
#include "Services/GravatarProfile.h"
#include "Services/ProfileCache.h"
#include "Services/RequestQuota.h"
#include "Services/ServiceLimits.h"
#include "Services/ServiceLog.h"
#include "Services/ServicePicture.h"
#include "Services/ServiceRequest.h"

#include <utility>

namespace {

using std::chrono::hours;

constexpr const char* kName = "Gravatar";
constexpr hours kLifeOfHit{24};
constexpr hours kLifeOfMiss{1};
constexpr long kOK = 200;
constexpr long kNotFound = 404;

/// Whether nobody on the way can read along.
bool isConfidential(const qv::URL& url) {
    const std::string host = url.host();
    return url.scheme() == "https" || host == "localhost" || host == "127.0.0.1" || host == "::1";
}

QVGravatarOptions sound(QVGravatarOptions options) {
    if (!options.clock) options.clock = [] { return std::chrono::system_clock::now(); };
    while (options.baseURL.ends_with('/'))
        options.baseURL.pop_back();
    options.apiKey = isBlank(options.apiKey) ? std::nullopt : QVString(trimmed(*options.apiKey));
    const auto url = qv::URL::URLWithString(options.baseURL);
    if (options.apiKey && url && !isConfidential(*url)) {
        qv::Log::write("<WARNING> The key for %@ is not sent, because its address is not an https address", kName);
    }
    return options;
}

}  // namespace

struct QVGravatarProvider::State {
    explicit State(QVGravatarOptions given) : options(sound(std::move(given))) {}

    using Profile = std::shared_ptr<const QVSocialProfile>;

    const QVGravatarOptions options;
    RequestQuota quota{options.clock};
    ProfileCache cache{options.clock};

    std::optional<qv::HTTPRequest> requestFor(const std::string& digest, Clock::time_point end) const;
    Profile ask(const std::string& digest, Clock::time_point end);
    Profile read(const std::string& digest, const qv::HTTPResponse& response, Clock::time_point end);
    Profile remember(const std::string& digest, Profile profile, hours life);
};

std::optional<qv::HTTPRequest> QVGravatarProvider::State::requestFor(const std::string& digest,
                                                                     Clock::time_point end) const {
    const auto url = qv::URL::URLWithString(options.baseURL + "/v3/profiles/" + digest);
    if (!url) return std::nullopt;
    auto request = serviceRequest(*url, "application/json", end);
    if (options.apiKey && isConfidential(*url)) {
        request.headers.emplace_back("Authorization", "Bearer " + *options.apiKey);
    }
    return request;
}

QVGravatarProvider::State::Profile QVGravatarProvider::State::ask(const std::string& digest, Clock::time_point end) {
    const auto request = requestFor(digest, end);
    if (!request) {
        qv::Log::write("<ERROR> The address of %@ is no web address", kName);
        return nullptr;
    }
    const auto response = qv::HTTPClient::sendSynchronousRequest(*request);
    const auto pause = quota.noteAnswer(response);
    if (pause) qv::Log::write("<WARNING> %@ is not asked again for %d seconds", kName, pause->count());
    if (!response.error && response.status == kNotFound) return remember(digest, nullptr, kLifeOfMiss);
    if (!response.error && response.status == kOK) return read(digest, response, end);
    logServiceFailure(kName, response);
    return nullptr;
}

QVGravatarProvider::State::Profile QVGravatarProvider::State::read(const std::string& digest,
                                                                   const qv::HTTPResponse& response,
                                                                   Clock::time_point end) {
    const auto object = qv::JSON::read(response.body.value_or(qv::Data()));
    if (!object || !object->isObject()) {
        qv::Log::write("<WARNING> The answer of %@ cannot be read", kName);
        return nullptr;
    }
    const auto profile = profileOfGravatar(*object);
    profile->setAddressBookAvatarData(pictureAtLink(pictureLinkOfGravatar(*object), end));
    if (!qv::profileHasContents(*profile)) return remember(digest, nullptr, kLifeOfMiss);
    // Transfers count in whole milliseconds, and may give up a little early.
    constexpr std::chrono::milliseconds kStep{10};
    const bool isWhole = profile->addressBookAvatarData() || Clock::now() + kStep < end;
    return remember(digest, profile, isWhole ? kLifeOfHit : kLifeOfMiss);
}

QVGravatarProvider::State::Profile QVGravatarProvider::State::remember(const std::string& digest, Profile profile,
                                                                       hours life) {
    cache.store(digest, profile, life);
    return profile;
}

QVGravatarProvider::QVGravatarProvider(QVGravatarOptions options)
    : mState(std::make_unique<State>(std::move(options))) {
}

QVGravatarProvider::~QVGravatarProvider() = default;

std::string QVGravatarProvider::name() const {
    return kName;
}

std::shared_ptr<QVSocialProfile> QVGravatarProvider::profileForRequest(const QVSocialSearchRequest& request,
                                                                       Clock::time_point deadline) {
    const std::string digest = qv::lowerHexSHA256(meaningOfEmail(request.emailAddress().value_or("")));
    const auto known = mState->cache.answerForKey(digest);
    const auto end = endOfRequests(deadline);
    const bool mayAsk = !known && Clock::now() < end && mState->quota.allowsRequest();
    const auto found = mayAsk ? mState->ask(digest, end) : known.value_or(nullptr);
    return found ? found->copy() : nullptr;
}
