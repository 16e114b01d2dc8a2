#include "Server/Session.h"

#include "Server/MetricsText.h"
#include "Server/Token.h"

#include <boost/asio/post.hpp>
#include <boost/asio/write.hpp>

#include <sstream>
#include <utility>

namespace qv::recognition {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;

constexpr std::uint32_t kHeaderLimit = 16 * 1024;
constexpr std::size_t kDrainLimit = 16U << 20U;
constexpr std::chrono::seconds kDrainTime{3};
constexpr std::chrono::seconds kAnswerTime{30};

std::string_view asText(beast::string_view text) {
    return {text.data(), text.size()};
}

std::string_view pathOf(beast::string_view target) {
    const auto whole = asText(target);
    return whole.substr(0, whole.find('?'));
}

/// Paths that are answered by the server itself, at once, to whoever asks.
bool isLookAround(std::string_view path) {
    return path == "/health" || path == "/metrics";
}

std::int64_t inMilliseconds(std::chrono::microseconds time) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
}

}  // namespace

Session::Session(asio::ip::tcp::socket socket, ServerState& state) : mState(state), mStream(std::move(socket)) {
    mState.sessions.insert(this);
}

Session::~Session() {
    mState.sessions.erase(this);
}

void Session::stop() {
    if (!mIsBusy) close();
    if (mIsReadingBody) mStream.cancel();
}

void Session::readHeader() {
    if (mState.isStopping) return close();
    mIsBusy = false;
    mHasUnreadBody = false;
    mParser.emplace();
    mParser->header_limit(kHeaderLimit);
    mParser->body_limit(mState.options.bodyLimit);
    mStream.expires_after(mState.options.headerTime);
    http::async_read_header(mStream, mBuffer, *mParser,
                            [self = shared_from_this()](Error error, std::size_t) { self->onHeader(error); });
}

void Session::onHeader(Error error) {
    if (error) return onBrokenRequest(error);
    mIsBusy = true;
    mHasUnreadBody = !mParser->is_done();
    if (const auto reason = refusal()) return refuse(*reason);
    const auto path = pathOf(mParser->get().target());
    if (isLookAround(path)) return answerLookAround(path);
    readBody();
}

void Session::answerLookAround(std::string_view path) {
    if (path == "/health") return answer(Status::ok, "ok\n", "text/plain");
    answer(Status::ok, mState.metrics.text(mState.load()), MetricsText::kContentType);
}

/// What could not be read as a request is still answered, if there is somebody to answer.
void Session::onBrokenRequest(Error error) {
    mHasUnreadBody = true;
    if (error == http::error::body_limit) return refuse({Status::payload_too_large, Outcome::TooLarge});
    if (error == http::error::header_limit || error == http::error::buffer_overflow)
        return refuse({Status::request_header_fields_too_large, Outcome::Malformed});
    const bool isHangUp = error == http::error::end_of_stream || error == http::error::partial_message;
    if (error.category() == make_error_code(http::error::bad_method).category() && !isHangUp)
        return refuse({Status::bad_request, Outcome::Malformed});
    // A connection that was kept for a next request, which did not come, is no request.
    if (mParser->got_some()) mState.metrics.count(Outcome::Incomplete);
    close();
}

std::optional<Session::Refusal> Session::refusal() const {
    const auto& request = mParser->get();
    const auto path = pathOf(request.target());
    if (isLookAround(path)) {
        const bool asks = request.method() == http::verb::get || request.method() == http::verb::head;
        return asks ? std::nullopt : std::optional(Refusal{Status::method_not_allowed, Outcome::WrongMethod});
    }
    if (path != "/") return Refusal{Status::not_found, Outcome::NotFound};
    if (request.method() != http::verb::post) return Refusal{Status::method_not_allowed, Outcome::WrongMethod};
    if (!hasToken()) return Refusal{Status::unauthorized, Outcome::Unauthorized};
    return std::nullopt;
}

void Session::refuse(Refusal refusal) {
    mState.metrics.count(refusal.outcome);
    log(refusal.status, {});
    answer(refusal.status);
}

bool Session::hasToken() const {
    const auto given = mParser->get().find("auth");
    if (mState.options.token.empty()) return true;
    return given != mParser->get().end() && isSameToken(asText(given->value()), mState.options.token);
}

void Session::readBody() {
    const bool waits = beast::iequals(mParser->get()[http::field::expect], "100-continue");
    mIsReadingBody = true;
    mStream.expires_after(mState.options.bodyTime);
    auto read = [self = shared_from_this()] {
        if (self->mState.isStopping) return self->onBody(asio::error::operation_aborted);
        http::async_read(self->mStream, self->mBuffer, *self->mParser,
                         [self](Error error, std::size_t) { self->onBody(error); });
    };
    if (!waits) return read();
    static constexpr std::string_view goOn = "HTTP/1.1 100 Continue\r\n\r\n";
    asio::async_write(mStream, asio::buffer(goOn.data(), goOn.size()),
                      [self = shared_from_this(), read](Error error, std::size_t) {
                          if (error) return self->close();
                          read();
                      });
}

void Session::onBody(Error error) {
    mIsReadingBody = false;
    // Nobody would read the picture any more, and whoever sends slowly must not hold up the end.
    if (error == asio::error::operation_aborted && mState.isStopping)
        return refuse({Status::service_unavailable, Outcome::Stopping});
    if (error) return onBrokenRequest(error);
    mHasUnreadBody = false;
    submit();
}

void Session::submit() {
    mIsAbandoned = std::make_shared<std::atomic<bool>>(false);
    Job job;
    job.jpeg = std::move(mParser->get().body());
    job.contentLanguage = std::string(asText(mParser->get()[http::field::content_language]));
    job.isAbandoned = mIsAbandoned;
    // The worker hands the session back whole: who destroys it must be the thread that serves it.
    job.finished = [self = shared_from_this()](JobReport report) mutable {
        const auto executor = self->mStream.get_executor();
        asio::post(executor, [self = std::move(self), found = std::move(report)]() mutable {
            self->onFinished(std::move(found));
        });
    };
    mSubmitted = job.submitted;
    mStream.expires_never();
    if (!mState.pool->submit(job))
        return refuse({Status::service_unavailable, mState.isStopping ? Outcome::Stopping : Outcome::Overloaded});
    watchForHangUp();
}

/// A client that is gone leaves its place in the waiting line to others.
void Session::watchForHangUp() {
    mStream.socket().async_wait(
        asio::socket_base::wait_read, [self = shared_from_this(), flag = mIsAbandoned](Error error) {
            if (error) return;
            char byte = 0;
            Error problem;
            const auto count =
                self->mStream.socket().receive(asio::buffer(&byte, 1), asio::socket_base::message_peek, problem);
            if (problem || count == 0) flag->store(true);
        });
}

void Session::onFinished(JobReport report) {
    Error ignored;
    mStream.socket().cancel(ignored);
    countFinished(report);
    Status status = Status::ok;
    if (report.end == JobEnd::Dropped) status = Status::service_unavailable;
    if (report.end == JobEnd::Failed) status = Status::internal_server_error;
    if (report.end == JobEnd::Done && !report.recognition.isPicture) status = Status::unprocessable_entity;
    log(status, report.recognition);
    if (status != Status::ok) return answer(status);
    answer(status, std::move(report.recognition.xml), "application/xml; charset=utf-8");
}

void Session::countFinished(const JobReport& report) {
    Outcome outcome = report.recognition.fields > 0 ? Outcome::Read : Outcome::NothingFound;
    if (!report.recognition.isPicture) outcome = Outcome::NoPicture;
    if (report.end == JobEnd::Failed) outcome = Outcome::Failed;
    if (report.end == JobEnd::Dropped) outcome = mIsAbandoned->load() ? Outcome::HungUp : Outcome::Stopping;
    mState.metrics.count(outcome);
    if (report.end != JobEnd::Done) return;
    mState.metrics.addRecognition(report.waited, report.recognition);
    mState.metrics.addRequest(
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - mSubmitted));
}

void Session::log(Status status, const Recognition& recognition) const {
    std::ostringstream line;
    line << static_cast<unsigned>(status) << ' ' << recognition.fields << " fields";
    std::chrono::microseconds whole{0};
    for (const auto& stage : recognition.stages) {
        line << ' ' << stage.stage << '=' << inMilliseconds(stage.time);
        whole += stage.time;
    }
    line << " total=" << inMilliseconds(whole) << "ms";
    if (recognition.isCutShort) line << " cut short";
    if (!recognition.keptAs.empty()) line << " kept as " << recognition.keptAs;
    if (!recognition.remark.empty()) line << " (" << recognition.remark << ')';
    mState.log(line.str());
}

void Session::answer(Status status, std::string body, const char* type) {
    mIsBusy = true;
    const bool known = mParser->is_header_done();
    const bool isHead = known && mParser->get().method() == http::verb::head;
    mResponse.emplace(status, 11);
    mResponse->keep_alive(known && mParser->get().keep_alive() && !mHasUnreadBody && !mState.isStopping);
    mResponse->set(http::field::cache_control, "no-store");
    if (type != nullptr) mResponse->set(http::field::content_type, type);
    if (status == Status::service_unavailable) mResponse->set(http::field::retry_after, "1");
    if (status == Status::method_not_allowed)
        mResponse->set(http::field::allow, isLookAround(pathOf(mParser->get().target())) ? "GET, HEAD" : "POST");
    if (isHead) {
        mResponse->content_length(body.size());
    } else {
        mResponse->body() = std::move(body);
        mResponse->prepare_payload();
    }
    mIsAbandoned.reset();
    mStream.expires_after(kAnswerTime);
    http::async_write(mStream, *mResponse,
                      [self = shared_from_this()](Error error, std::size_t) { self->onAnswered(error); });
}

void Session::onAnswered(Error error) {
    if (error) return close();
    if (mResponse->keep_alive()) return readHeader();
    if (!mHasUnreadBody) return close();
    Error ignored;
    mStream.socket().shutdown(asio::ip::tcp::socket::shutdown_send, ignored);
    mDrained.resize(64U << 10U);
    mDrainLeft = kDrainLimit;
    mStream.expires_after(kDrainTime);
    drain();
}

/// Closing with unread bytes resets the connection, and the client would never see the answer: what it still sends is
/// taken and dropped, within bounds.
void Session::drain() {
    mStream.async_read_some(asio::buffer(mDrained), [self = shared_from_this()](Error error, std::size_t count) {
        if (error || count >= self->mDrainLeft) return self->close();
        self->mDrainLeft -= count;
        self->drain();
    });
}

void Session::close() {
    Error ignored;
    mStream.socket().shutdown(asio::ip::tcp::socket::shutdown_both, ignored);
    mStream.close();
}

}  // namespace qv::recognition
