#include "CurlSession.h"

#include "CryptoLibrary.h"
#include "HTTPHeaderRules.h"
#include "SocketAddress.h"

#include <pthread.h>
#include <sys/socket.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <optional>

namespace qv {

namespace {

/// The longest time that libcurl counts in milliseconds on every system.
constexpr long kLongestSeconds = std::numeric_limits<int>::max() / 1000;

CURLcode initializeOnce() {
    readyCryptoLibrary();
    static const CURLcode code = curl_global_init(CURL_GLOBAL_DEFAULT);
    return code;
}

/// What exchanges of one thread have in common: open connections, and what is known of names and TLS sessions.
struct Share {
    CURLSH* curl = initializeOnce() == CURLE_OK ? curl_share_init() : nullptr;
    Share() {
        for (const auto data : {CURL_LOCK_DATA_CONNECT, CURL_LOCK_DATA_DNS, CURL_LOCK_DATA_SSL_SESSION}) {
            if (curl) curl_share_setopt(curl, CURLSHOPT_SHARE, data);
        }
    }
    ~Share() { curl_share_cleanup(curl); }
    Share(const Share&) = delete;
    Share& operator=(const Share&) = delete;
};

/// Never deleted: threads may come to their end after the process has begun with its own.
std::optional<pthread_key_t> shareKey() {
    static const std::optional<pthread_key_t> key = []() -> std::optional<pthread_key_t> {
        pthread_key_t made{};
        const int error = ::pthread_key_create(&made, [](void* share) { delete static_cast<Share*>(share); });
        return error == 0 ? std::optional(made) : std::nullopt;
    }();
    return key;
}

/// No thread_local: where there is no memory to note its destructor, the C library ends the process.
CURLSH* shareOfThread() {
    const auto key = shareKey();
    if (!key) return nullptr;
    if (const auto* known = static_cast<const Share*>(::pthread_getspecific(*key))) return known->curl;
    std::unique_ptr<Share> share(new (std::nothrow) Share);
    if (!share || ::pthread_setspecific(*key, share.get()) != 0) return nullptr;
    return share.release()->curl;
}

bool alwaysHasBody(const std::string& method) {
    return method == "POST" || method == "PUT" || method == "PATCH";
}

/// libcurl takes a header without a value for an order to leave its own away, unless it ends in a semicolon.
std::string headerLine(const std::string& name, const std::string& value) {
    if (value.find_first_not_of(" \t") == std::string::npos) return name + ";";
    return name + ": " + value;
}

/// The last moment before the connection: what a name stands for cannot change any more.
curl_socket_t openPublicSocket(void*, curlsocktype, curl_sockaddr* address) noexcept {
    if (!isPublicSocketAddress(address->addr)) return CURL_SOCKET_BAD;
#ifdef SOCK_CLOEXEC
    constexpr int kFlags = SOCK_CLOEXEC;
#else
    constexpr int kFlags = 0;
#endif
    return ::socket(address->family, address->socktype | kFlags, address->protocol);
}

}  // namespace

// A handle is not used again: when an answer begins with a folded line, libcurl before 8.1 writes it behind the last
// header of the handle's answer before, which is no longer there.
CurlSession::CurlSession() {
    CURLSH* const share = shareOfThread();
    mHandle = share ? curl_easy_init() : nullptr;
    if (!mHandle) mFailure = CURLE_FAILED_INIT;
    set(CURLOPT_SHARE, share);
}

CurlSession::~CurlSession() {
    curl_easy_cleanup(mHandle);
}

void CurlSession::restrict() {
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_PROXY, "");
    set(CURLOPT_NETRC, static_cast<long>(CURL_NETRC_IGNORED));
    set(CURLOPT_SSL_VERIFYPEER, 1L);
    set(CURLOPT_SSL_VERIFYHOST, 2L);
    set(CURLOPT_FOLLOWLOCATION, 0L);
    set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    set(CURLOPT_NOSIGNAL, 1L);
}

void CurlSession::setRequest(const HTTPRequest& request) {
    set(CURLOPT_URL, request.url.absoluteString().c_str());
    // The path goes out as it was given.
    set(CURLOPT_PATH_AS_IS, 1L);
    setBody(request);
    setHeaders(request);
    setLimits(request);
    restrictAddresses(request);
}

void CurlSession::setBody(const HTTPRequest& request) {
    if (request.body || alwaysHasBody(request.method)) {
        const bool empty = !request.body || request.body->empty();
        set(CURLOPT_POSTFIELDSIZE_LARGE, empty ? curl_off_t{0} : static_cast<curl_off_t>(request.body->size()));
        set(CURLOPT_POSTFIELDS, empty ? "" : reinterpret_cast<const char*>(request.body->data()));
    }
    if (request.method == "HEAD") {
        set(CURLOPT_NOBODY, 1L);
    } else {
        set(CURLOPT_CUSTOMREQUEST, request.method.c_str());
    }
}

void CurlSession::setHeaders(const HTTPRequest& request) {
    // Not every server answers an expectation, and a form is never what is sent.
    appendHeader("Expect:");
    if (!hasHeader(request, "Content-Type")) appendHeader("Content-Type:");
    for (const auto& [name, value] : request.headers)
        appendHeader(headerLine(name, value));
    set(CURLOPT_HTTPHEADER, mHeaders.get());
}

void CurlSession::appendHeader(const std::string& line) {
    curl_slist* list = curl_slist_append(mHeaders.get(), line.c_str());
    if (!list) {
        mFailure = CURLE_OUT_OF_MEMORY;
    } else if (!mHeaders) {
        mHeaders.reset(list);
    }
}

void CurlSession::setLimits(const HTTPRequest& request) {
    if (request.stallSeconds > 0) {
        set(CURLOPT_CONNECTTIMEOUT_MS, std::min(request.stallSeconds, kLongestSeconds) * 1000);
    }
    // The length that answers a HEAD request is of a body that never comes.
    constexpr auto kLargest = static_cast<std::size_t>(std::numeric_limits<curl_off_t>::max());
    if (request.method != "HEAD") {
        set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(std::min(request.maximumBodySize, kLargest)));
    }
}

void CurlSession::restrictAddresses(const HTTPRequest& request) {
    if (!request.onlyPublicAddresses) return;
    set(CURLOPT_OPENSOCKETFUNCTION, openPublicSocket);
    // A connection that is open already was not checked.
    set(CURLOPT_FRESH_CONNECT, 1L);
}

CURLcode CurlSession::perform() {
    return mFailure == CURLE_OK ? curl_easy_perform(mHandle) : mFailure;
}

long CurlSession::status() const {
    long status = 0;
    if (mHandle) curl_easy_getinfo(mHandle, CURLINFO_RESPONSE_CODE, &status);
    return status;
}

}  // namespace qv
