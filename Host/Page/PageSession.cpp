#include "Page/PageSession.h"

#include "Page/PageHeaders.h"

#include <boost/asio/post.hpp>

#include <cstdint>
#include <exception>
#include <limits>
#include <utility>

namespace qvhost {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;

constexpr std::uint32_t kHeaderLimit = 16 * 1024;
constexpr std::size_t kDrainLimit = std::size_t{128} << 20;
constexpr std::chrono::seconds kDrainTime{5};

std::string asText(beast::string_view text) {
    return {text.data(), text.size()};
}

PageRequest headOf(const http::request<http::string_body>& from) {
    PageRequest request;
    request.method = asText(from.method_string());
    request.target = asText(from.target());
    request.host = asText(from[http::field::host]);
    request.origin = asText(from[http::field::origin]);
    request.fetchSite = asText(from["Sec-Fetch-Site"]);
    request.cookie = asText(from[http::field::cookie]);
    request.contentType = asText(from[http::field::content_type]);
    return request;
}

}  // namespace

PageSession::PageSession(asio::ip::tcp::socket socket, PageServerState& state)
    : mState(state), mStream(std::move(socket)) {
    mState.sessions.insert(this);
}

PageSession::~PageSession() {
    releaseBody();
    mState.sessions.erase(this);
}

void PageSession::readHeader() {
    if (mState.isStopping) return close();
    mHasUnreadBody = false;
    mParser.emplace();
    mParser->header_limit(kHeaderLimit);
    // The length is looked at below, where it is known what for.
    mParser->body_limit(std::numeric_limits<std::uint64_t>::max());
    mStream.expires_after(mState.limits.headerTime);
    http::async_read_header(mStream, mBuffer, *mParser,
                            [self = shared_from_this()](Error error, std::size_t) { self->onHeader(error); });
}

void PageSession::onHeader(Error error) {
    if (error) return onBrokenRequest(error);
    mHasUnreadBody = !mParser->is_done();
    mRequest = headOf(mParser->get());
    if (const unsigned status = refusal(); status != 0) return send(PageAnswer::nothing(status));
    readBody();
}

/// What could not be read as a request is still answered, if there is somebody to answer.
void PageSession::onBrokenRequest(Error error) {
    mHasUnreadBody = true;
    const bool isHangUp = error == http::error::end_of_stream || error == http::error::partial_message;
    const bool isHTTP = error.category() == make_error_code(http::error::bad_method).category();
    if (!isHTTP || isHangUp) return close();
    const bool isTooLong = error == http::error::header_limit || error == http::error::buffer_overflow;
    send(PageAnswer::nothing(isTooLong ? 431 : 400));
}

unsigned PageSession::refusal() {
    const auto& head = mParser->get();
    // Two of a kind might be read differently by whoever stands in between.
    if (head.count(http::field::host) != 1 || head.count(http::field::origin) > 1) return 403;
    if (const auto status = mState.handler->refusal(mRequest)) return *status;
    if (mParser->is_done()) return 0;
    const auto length = mParser->content_length();
    if (!length) return 411;
    if (*length > mState.handler->bodyLimit(mRequest)) return 413;
    const auto bytes = static_cast<std::size_t>(*length);
    if (mState.bodyBytes + bytes > mState.limits.bodies) return 503;
    mReservedBytes = bytes;
    mState.bodyBytes += bytes;
    return 0;
}

void PageSession::readBody() {
    mStream.expires_after(mState.limits.bodyTime);
    http::async_read(mStream, mBuffer, *mParser,
                     [self = shared_from_this()](Error error, std::size_t) { self->onBody(error); });
}

void PageSession::onBody(Error error) {
    if (error) return onBrokenRequest(error);
    mHasUnreadBody = false;
    mRequest.body = std::move(mParser->get().body());
    handle();
}

/// Off the network's thread, which others wait for too.
void PageSession::handle() {
    mStream.expires_never();
    // Who destroys the session must be the thread that serves it, whoever answers: the one holder of it goes back
    // whole.
    const auto held = std::make_shared<std::shared_ptr<PageSession>>(shared_from_this());
    const PageAnswering answer = [held, executor = mStream.get_executor()](PageAnswer given) {
        asio::post(executor, [session = std::exchange(*held, nullptr), given = std::move(given)]() mutable {
            if (session) session->send(std::move(given));
        });
    };
    asio::post(mState.workers, [handler = mState.handler, request = std::move(mRequest), answer] {
        try {
            handler->handle(request, answer);
        } catch (const std::exception&) {
            answer(PageAnswer::nothing(500));
        }
    });
}

void PageSession::send(PageAnswer answer) {
    releaseBody();
    mStream.expires_after(mState.limits.answerTime);
    if (!answer.file.empty()) return sendFile(answer);
    mResponse.emplace();
    mResponse->body() = std::move(answer.body);
    write(*mResponse, answer);
}

void PageSession::sendFile(const PageAnswer& answer) {
    mFileResponse.emplace();
    Error error;
    mFileResponse->body().open(answer.file.c_str(), beast::file_mode::scan, error);
    std::error_code ignored;
    std::filesystem::remove(answer.file, ignored);
    if (error) return send(PageAnswer::nothing(500));
    write(*mFileResponse, answer);
}

template <typename Body>
void PageSession::write(Response<Body>& response, const PageAnswer& answer) {
    response.result(answer.status);
    const bool known = mParser->is_header_done();
    const bool keepsOpen = known && mParser->get().keep_alive() && !mHasUnreadBody && !mState.isStopping;
    response.keep_alive(keepsOpen);
    for (const auto& [name, value] : pageHeaders(answer))
        response.set(name, value);
    response.prepare_payload();
    http::async_write(mStream, response, [self = shared_from_this(), keepsOpen](Error error, std::size_t) {
        self->onSent(error, keepsOpen);
    });
}

void PageSession::onSent(Error error, bool keepsOpen) {
    mResponse.reset();
    mFileResponse.reset();
    if (error) return close();
    if (keepsOpen) return readHeader();
    if (!mHasUnreadBody) return close();
    Error ignored;
    mStream.socket().shutdown(asio::ip::tcp::socket::shutdown_send, ignored);
    mDrained.resize(std::size_t{64} << 10);
    mDrainLeft = kDrainLimit;
    mStream.expires_after(kDrainTime);
    drain();
}

/// Closing with unread bytes resets the connection, and the client would never see the answer: what it still sends is
/// taken and dropped, within bounds.
void PageSession::drain() {
    mStream.async_read_some(asio::buffer(mDrained), [self = shared_from_this()](Error error, std::size_t count) {
        if (error || count >= self->mDrainLeft) return self->close();
        self->mDrainLeft -= count;
        self->drain();
    });
}

void PageSession::releaseBody() {
    mState.bodyBytes -= std::exchange(mReservedBytes, 0);
}

void PageSession::close() {
    Error ignored;
    mStream.socket().shutdown(asio::ip::tcp::socket::shutdown_both, ignored);
    mStream.close();
}

}  // namespace qvhost
