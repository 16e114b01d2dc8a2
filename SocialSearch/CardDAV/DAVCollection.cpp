#include "CardDAV/DAVCollection.h"

#include "CardDAV/DAVAddress.h"
#include "CardDAV/DAVBodies.h"
#include "CardDAV/DAVErrors.h"
#include "QVPlatform/Text.h"
#include "QVSocialSearch/QVVCardProfile.h"

#include <algorithm>

namespace {

constexpr std::size_t kLargestAnswer = std::size_t{32} << 20;
constexpr std::size_t kCardsPerRequest = 50;
/// Whoever tells of more cards than this, for each that was asked for, wants to keep us busy.
constexpr std::size_t kMostAnswers = 4;
constexpr long kMultistatus = 207;
constexpr long kUnauthorized = 401;
constexpr long kMissing = 404;
constexpr long kGone = 410;
constexpr long kInsufficientStorage = 507;

using Headers = std::vector<std::pair<std::string, std::string>>;

Headers headersWithDepth(const char* depth) {
    return {{"Depth", depth}, {"Content-Type", "application/xml; charset=utf-8"}};
}

/// Nobody else needs to be asked after these.
bool isFinal(const DAVAnswer& answer) {
    return (answer.failure && !answer.isTooLarge) || answer.status == kUnauthorized;
}

std::optional<std::vector<DAVResource>> resourcesOf(const DAVAnswer& answer) {
    if (answer.failure || answer.status != kMultistatus) return std::nullopt;
    return resourcesOfMultistatus(answer.body);
}

bool mayBeCard(const DAVResource& resource) {
    const std::string type = qv::Text::lowercased(resource.contentType);
    return !resource.isCollection && (type.empty() || type.find("vcard") != std::string::npos ||
                                      type.find("directory") != std::string::npos || resource.href.ends_with(".vcf"));
}

/// RFC 6352, 8.6.2: the collection's own response says that there would be more.
bool isCut(const std::vector<DAVResource>& resources) {
    return std::any_of(resources.begin(), resources.end(),
                       [](const DAVResource& resource) { return resource.status == kInsufficientStorage; });
}

}  // namespace

std::string DAVCard::UID() const {
    return qv::uidOfCard(card).value_or(nameOfCard(url));
}

std::optional<std::vector<std::string>> DAVCollection::list(Problems& problems) {
    const DAVAnswer answer = mClient.send(
        {.method = "PROPFIND", .url = mURL, .headers = headersWithDepth("1"), .body = listBody()}, kLargestAnswer);
    const auto resources = resourcesOf(answer);
    if (!resources) {
        problems.fail(answer.isSuccess() ? notCardDAV(answer.url) : answer.error(/*isWriting=*/false));
        return std::nullopt;
    }
    std::vector<std::string> hrefs;
    for (const DAVResource& resource : *resources) {
        if (mayBeCard(resource) && member(resource.href, problems)) hrefs.push_back(resource.href);
    }
    if (isCut(*resources)) problems.add(mURL.absoluteString(), "the server lists only a part of the cards", false);
    return hrefs;
}

bool DAVCollection::visitCards(const std::vector<std::string>& hrefs, Problems& problems, const DAVVisit& visit) {
    for (auto begin = hrefs.begin(); begin != hrefs.end();) {
        const auto count = std::min<std::ptrdiff_t>(kCardsPerRequest, hrefs.end() - begin);
        if (!visitBatch({begin, begin + count}, problems, visit)) return false;
        begin += count;
    }
    return true;
}

bool DAVCollection::visitMatches(std::string_view property, std::string_view text, Problems& problems,
                                 const DAVVisit& visit) {
    const DAVAnswer answer = report(queryBody(property, text));
    if (isFinal(answer)) {
        problems.fail(answer.error(/*isWriting=*/false));
        return true;
    }
    auto resources = resourcesOf(answer);
    if (!resources || isCut(*resources)) return false;
    std::vector<std::string> hrefs;
    for (DAVResource& resource : *resources) {
        if (resource.card && !show(resource, problems, visit)) return true;
        if (!resource.card && member(resource.href, problems)) hrefs.push_back(resource.href);
    }
    visitCards(hrefs, problems, visit);
    return true;
}

DAVAnswer DAVCollection::report(std::string body) {
    return mClient.send({.method = "REPORT", .url = mURL, .headers = headersWithDepth("1"), .body = std::move(body)},
                        kLargestAnswer);
}

bool DAVCollection::visitBatch(const std::vector<std::string>& hrefs, Problems& problems, const DAVVisit& visit) {
    if (hrefs.empty()) return true;
    const DAVAnswer answer = report(multigetBody(hrefs));
    if (isFinal(answer)) {
        problems.fail(answer.error(/*isWriting=*/false));
        return false;
    }
    auto resources = resourcesOf(answer);
    if (!resources && answer.isTooLarge && hrefs.size() > 1) {
        const auto middle = hrefs.begin() + static_cast<std::ptrdiff_t>(hrefs.size() / 2);
        return visitBatch({hrefs.begin(), middle}, problems, visit) &&
               visitBatch({middle, hrefs.end()}, problems, visit);
    }
    if (!resources) return visitSingly(hrefs, problems, visit);
    if (resources->size() > kMostAnswers * hrefs.size()) {
        problems.fail(notCardDAV(answer.url));
        return false;
    }
    return std::all_of(resources->begin(), resources->end(),
                       [&](DAVResource& resource) { return show(resource, problems, visit); });
}

bool DAVCollection::visitSingly(const std::vector<std::string>& hrefs, Problems& problems, const DAVVisit& visit) {
    return std::all_of(hrefs.begin(), hrefs.end(),
                       [&](const std::string& href) { return visitOne(href, problems, visit); });
}

bool DAVCollection::visitOne(const std::string& href, Problems& problems, const DAVVisit& visit) {
    const std::optional<qv::URL> url = member(href, problems);
    if (!url) return true;
    const DAVReading reading = read(*url);
    if (reading.state == DAVReading::State::Read) return visit(*reading.card);
    if (reading.state == DAVReading::State::Failed) problems.fail(reading.error);
    if (reading.state == DAVReading::State::Broken) problems.add(url->absoluteString(), reading.problem, true);
    return reading.state != DAVReading::State::Failed;
}

bool DAVCollection::show(DAVResource& resource, Problems& problems, const DAVVisit& visit) {
    if (resource.status == kMissing || resource.status == kGone) return true;
    const std::optional<qv::URL> url = member(resource.href, problems);
    if (!url) return true;
    if (!resource.card) return visitOne(resource.href, problems, visit);
    std::string problem;
    std::optional<QVVCard> card = QVVCard::cardWithBytes(*resource.card, &problem);
    if (card) return visit({.url = *url, .card = *std::move(card)});
    problems.add(url->absoluteString(), problem, /*isBroken=*/true);
    return true;
}

DAVReading DAVCollection::read(const qv::URL& url) {
    const DAVAnswer answer = mClient.send({.method = "GET", .url = url}, QVVCard::kMaximumSize);
    DAVReading reading{.bytes = answer.body, .ETag = answer.ETag};
    if (answer.isTooLarge) {
        reading.state = DAVReading::State::Broken;
        reading.problem = "it is too large";
    } else if (answer.status == kMissing || answer.status == kGone) {
        reading.state = DAVReading::State::Missing;
    } else if (!answer.isSuccess()) {
        reading.error = answer.error(/*isWriting=*/false);
    } else if (auto card = QVVCard::cardWithBytes(answer.body, &reading.problem)) {
        reading.state = DAVReading::State::Read;
        reading.card = DAVCard{url, *std::move(card)};
    } else {
        reading.state = DAVReading::State::Broken;
    }
    return reading;
}

bool DAVCollection::isUnchanged(const DAVReading& reading) {
    DAVRequest request{.method = "GET", .url = reading.card->url};
    if (!reading.ETag.empty()) request.headers.emplace_back("If-None-Match", reading.ETag);
    const DAVAnswer answer = mClient.send(std::move(request), QVVCard::kMaximumSize);
    constexpr long kNotModified = 304;
    return answer.status == kNotModified || (answer.isSuccess() && answer.body == reading.bytes);
}

std::optional<qv::URL> DAVCollection::member(const std::string& href, Problems& problems) const {
    auto url = qv::URL::URLWithString(href, /*relativeToURL=*/mURL);
    if (url && isMember(mURL, *url)) return url;
    const bool isCollection = url && mURL.isSameOriginAs(*url) && plainPath(asCollection(*url)) == plainPath(mURL);
    if (!isCollection) {
        problems.add(mURL.absoluteString(), "the server names a card that is not in there", /*isBroken=*/false);
    }
    return std::nullopt;
}
