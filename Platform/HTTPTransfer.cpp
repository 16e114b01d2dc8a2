#include "HTTPTransfer.h"

#include "CurlSession.h"

#include <algorithm>
#include <array>
#include <utility>

namespace qv {

using std::chrono::milliseconds;
using std::chrono::seconds;

namespace {

/// libcurl's callbacks, in the shapes that it asks for. Nothing may be thrown through it.
std::size_t onHeader(char* bytes, std::size_t, std::size_t size, void* transfer) noexcept {
    return static_cast<HTTPTransfer*>(transfer)->receiveHeader(bytes, size) ? size : 0;
}

std::size_t onBody(char* bytes, std::size_t, std::size_t size, void* transfer) noexcept {
    return static_cast<HTTPTransfer*>(transfer)->receiveBody(bytes, size) ? size : 0;
}

int onProgress(void* transfer, curl_off_t, curl_off_t down, curl_off_t, curl_off_t up) noexcept {
    return static_cast<HTTPTransfer*>(transfer)->noteProgress(down + up) ? 0 : 1;
}

int onConnected(void* transfer, char*, char*, int, int) noexcept {
    static_cast<HTTPTransfer*>(transfer)->noteConnected();
    return CURL_PREREQFUNC_OK;
}

}  // namespace

Error makeHTTPError(long code, std::string description) {
    return {std::string(kURLErrorDomain), code, {{std::string(kErrorDescriptionKey), std::move(description)}}};
}

Error makeHTTPError(HTTPErrorCode code, std::string description) {
    return makeHTTPError(static_cast<long>(code), std::move(description));
}

HTTPTransfer::HTTPTransfer(const HTTPRequest& request, std::optional<Clock::time_point> end)
    : mRequest(request), mEnd(end), mLastProgress(Clock::now()) {
}

bool HTTPTransfer::receiveHeader(const char* bytes, std::size_t size) {
    mLastProgress = Clock::now();
    try {
        mTooLarge = size > 0 && !mHeaderReader.readLine({bytes, size});
        return !mTooLarge;
    } catch (...) {
        return false;
    }
}

bool HTTPTransfer::receiveBody(const char* bytes, std::size_t size) {
    mLastProgress = Clock::now();
    mTooLarge = size > mRequest.maximumBodySize - mBody.size();
    if (mTooLarge) return false;
    try {
        mBody.insert(mBody.end(), bytes, bytes + size);
        return true;
    } catch (...) {
        return false;
    }
}

bool HTTPTransfer::noteProgress(std::int64_t bytesMoved) {
    const auto now = Clock::now();
    if (bytesMoved != std::exchange(mBytesMoved, bytesMoved)) mLastProgress = now;
    // libcurl limits the connecting itself, and its own measure of speed looks too far back to tell a halt.
    mStalled = mConnected && mRequest.stallSeconds > 0 && now - mLastProgress >= seconds(mRequest.stallSeconds);
    return !mStalled;
}

void HTTPTransfer::noteConnected() {
    mConnected = true;
    mLastProgress = Clock::now();
}

Error HTTPTransfer::describe(long code, const char* detail) const {
    if (mTooLarge || code == CURLE_FILESIZE_EXCEEDED) {
        return makeHTTPError(HTTPErrorCode::AnswerTooLarge, "The answer is larger than allowed");
    }
    if (mStalled) {
        return makeHTTPError(CURLE_OPERATION_TIMEDOUT,
                             "No progress for " + std::to_string(mRequest.stallSeconds) + " seconds");
    }
    return makeHTTPError(code, *detail ? detail : curl_easy_strerror(static_cast<CURLcode>(code)));
}

std::optional<Error> HTTPTransfer::perform() {
    CurlSession session;
    std::array<char, CURL_ERROR_SIZE> detail{};
    session.set(CURLOPT_ERRORBUFFER, detail.data());
    session.restrict();
    session.setRequest(mRequest);
    session.set(CURLOPT_HEADERFUNCTION, onHeader);
    session.set(CURLOPT_HEADERDATA, static_cast<void*>(this));
    session.set(CURLOPT_WRITEFUNCTION, onBody);
    session.set(CURLOPT_WRITEDATA, static_cast<void*>(this));
    session.set(CURLOPT_NOPROGRESS, 0L);
    session.set(CURLOPT_XFERINFOFUNCTION, onProgress);
    session.set(CURLOPT_XFERINFODATA, static_cast<void*>(this));
    session.set(CURLOPT_PREREQFUNCTION, onConnected);
    session.set(CURLOPT_PREREQDATA, static_cast<void*>(this));
    if (mEnd) {
        const auto left = std::chrono::duration_cast<milliseconds>(*mEnd - Clock::now());
        // 0 would mean no limit at all.
        session.set(CURLOPT_TIMEOUT_MS, static_cast<long>(std::max<milliseconds::rep>(left.count(), 1)));
    }
    const CURLcode code = session.perform();
    mStatus = session.status();
    // libcurl takes some first lines without a number for an answer.
    if (code == CURLE_OK && mStatus == 0) return makeHTTPError(CURLE_WEIRD_SERVER_REPLY, "The answer has no status");
    if (code == CURLE_OK) return std::nullopt;
    return describe(code, detail.data());
}

HTTPResponse HTTPTransfer::run() {
    HTTPResponse response;
    response.error = perform();
    response.status = mStatus;
    response.headers = mHeaderReader.takeHeaders();
    if (!response.error && !mBody.empty()) response.body = std::move(mBody);
    return response;
}

}  // namespace qv
