#include "CardDAV/DAVClient.h"

#include "AddressBook/AddressBookProblems.h"
#include "CardDAV/DAVAddress.h"
#include "CardDAV/DAVErrors.h"

#include <algorithm>
#include <any>
#include <array>

namespace {

constexpr int kMostRedirects = 5;
constexpr long kStallSeconds = 30;
constexpr std::size_t kBytesPerOperation = std::size_t{512} << 20;
constexpr long kUnauthorized = 401;

std::string headerOf(const qv::HTTPResponse& response, std::string_view name) {
    for (const auto& [key, value] : response.headers) {
        if (key == name) return value;
    }
    return "";
}

/// What a program in front of the server weakens is still the server's own mark; a weak one never matches.
std::string strongETag(std::string tag) {
    if (tag.starts_with("W/")) tag.erase(0, 2);
    return tag;
}

bool isRedirect(long status) {
    constexpr std::array<long, 4> kStatuses = {301, 302, 307, 308};
    return std::find(kStatuses.begin(), kStatuses.end(), status) != kStatuses.end();
}

std::string textOf(const qv::Error& error) {
    const auto text = error.userInfo.find(std::string(qv::kErrorDescriptionKey));
    const auto* description = text == error.userInfo.end() ? nullptr : std::any_cast<std::string>(&text->second);
    return description != nullptr ? *description : "the transfer failed";
}

bool isCode(const qv::Error& error, qv::HTTPErrorCode code) {
    return error.domain == qv::kURLErrorDomain && error.code == static_cast<long>(code);
}

/// Whether a request that failed like this can have reached the server: not when it was never sent, nor without a name,
/// a connection or a certificate (libcurl's codes).
bool mayHaveArrived(const qv::Error& error) {
    constexpr std::array<long, 6> kBeforeIt = {-1, -2, 6, 7, 35, 60};
    return error.domain == qv::kURLErrorDomain &&
           std::find(kBeforeIt.begin(), kBeforeIt.end(), error.code) == kBeforeIt.end();
}

}  // namespace

qv::Error DAVAnswer::error(bool isWriting) const {
    return failure ? *failure : errorOfStatus(status, url, isWriting);
}

DAVClient::DAVClient(qv::URL server, DAVAuthorization& authorization, long totalSeconds)
    : mServer(std::move(server)),
      mAuthorization(authorization),
      mEnd(Clock::now() + std::chrono::seconds(std::clamp(totalSeconds, 1L, 86400L))),
      mBytesLeft(kBytesPerOperation) {
}

DAVAnswer DAVClient::send(DAVRequest request, std::size_t maximumSize) {
    for (int redirects = 0;; ++redirects) {
        DAVAnswer answer = exchange(request, maximumSize);
        if (answer.failure || !mRedirect) return answer;
        if (redirects == kMostRedirects) {
            answer.failure = addressBookError(QVAddressBookErrorUnreadable,
                                              request.url.absoluteString() + ": the server redirects too often");
            return answer;
        }
        request.url = *mRedirect;
    }
}

DAVAnswer DAVClient::exchange(const DAVRequest& request, std::size_t maximumSize) {
    DAVAnswer answer{.url = request.url};
    mRedirect.reset();
    // The one place where requests leave from.
    if (!mServer.isSameOriginAs(request.url)) {
        answer.failure = elsewhere(mServer, request.url);
        return answer;
    }
    qv::HTTPResponse response = transfer(request, maximumSize);
    if (response.status == kUnauthorized && mAuthorization.takesChallenge(response)) {
        response = transfer(request, maximumSize);
    }
    answer.status = response.status;
    if (response.error) {
        answer.isTooLarge = isCode(*response.error, qv::HTTPErrorCode::AnswerTooLarge);
        answer.isUnanswered = true;
        answer.isLost = mayHaveArrived(*response.error);
        answer.failure = addressBookError(QVAddressBookErrorUnreadable,
                                          request.url.absoluteString() + ": " + textOf(*response.error));
        return answer;
    }
    answer.ETag = strongETag(headerOf(response, "etag"));
    if (response.body) answer.body.assign(response.body->begin(), response.body->end());
    mRedirect = target(answer, response);
    return answer;
}

qv::HTTPResponse DAVClient::transfer(const DAVRequest& request, std::size_t maximumSize) {
    qv::HTTPRequest sent{.method = request.method, .url = request.url, .headers = request.headers};
    if (!request.body.empty()) sent.body = qv::Data(request.body.begin(), request.body.end());
    if (const QVString header = mAuthorization.header(request.method, request.url)) {
        sent.headers.emplace_back("Authorization", *header);
    }
    sent.stallSeconds = kStallSeconds;
    sent.totalSeconds = secondsLeft();
    sent.maximumBodySize = std::min(maximumSize, mBytesLeft);
    qv::HTTPResponse response;
    if (sent.totalSeconds <= 0) {
        response.error =
            qv::Error{std::string(kQVAddressBookErrorDomain),
                      QVAddressBookErrorUnreadable,
                      {{std::string(qv::kErrorDescriptionKey), std::string("the server took too long in all")}}};
        return response;
    }
    response = qv::HTTPClient::sendSynchronousRequest(sent);
    if (response.body) mBytesLeft -= response.body->size();
    return response;
}

std::optional<qv::URL> DAVClient::target(DAVAnswer& answer, const qv::HTTPResponse& response) const {
    const std::string location = headerOf(response, "location");
    if (!isRedirect(response.status) || location.empty()) return std::nullopt;
    auto url = qv::URL::URLWithString(location, /*relativeToURL=*/answer.url);
    if (url && mServer.isSameOriginAs(*url)) return url;
    answer.failure = elsewhere(answer.url, url);
    return std::nullopt;
}

long DAVClient::secondsLeft() const {
    return std::chrono::ceil<std::chrono::seconds>(mEnd - Clock::now()).count();
}
