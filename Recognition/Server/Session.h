#pragma once

#include "Server/HTTPServer.h"
#include "Server/Metrics.h"

#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http.hpp>

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace qv::recognition {

class Session;

/// What the sessions of one server share. Everything in it belongs to the server's thread, but the pool and the log.
struct ServerState {
    const ServerOptions& options;
    const HTTPServer::Log& log;
    WorkerPool* pool = nullptr;
    std::set<Session*> sessions;
    Metrics metrics;
    bool isStopping = false;

    Load load() const { return {options.workers, pool->busy(), pool->waiting(), options.places, sessions.size()}; }
};

/// One connection: reads a request, has it worked on, answers, and begins again. Keeps itself alive while it has
/// something under way. Lives on the server's thread.
class Session : public std::enable_shared_from_this<Session> {
  public:
    Session(boost::asio::ip::tcp::socket socket, ServerState& state);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    void start() { readHeader(); }
    /// Closes the connection unless a request is being worked on or answered; whose request is still coming gets 503.
    void stop();

  private:
    using Body = boost::beast::http::vector_body<std::uint8_t>;
    using Error = boost::beast::error_code;
    using Status = boost::beast::http::status;

    void readHeader();
    void onHeader(Error error);
    void onBrokenRequest(Error error);
    void readBody();
    void onBody(Error error);
    void submit();
    void watchForHangUp();
    void onFinished(JobReport report);
    void countFinished(const JobReport& report);

    struct Refusal {
        Status status;
        Outcome outcome;
    };
    std::optional<Refusal> refusal() const;
    bool hasToken() const;
    void answerLookAround(std::string_view path);
    /// With an empty body, as everything that is no result.
    void refuse(Refusal refusal);
    void answer(Status status, std::string body = {}, const char* type = nullptr);
    void onAnswered(Error error);
    void drain();
    void close();
    void log(Status status, const Recognition& recognition) const;

    ServerState& mState;
    boost::beast::tcp_stream mStream;
    boost::beast::flat_buffer mBuffer;
    std::optional<boost::beast::http::request_parser<Body>> mParser;
    std::optional<boost::beast::http::response<boost::beast::http::string_body>> mResponse;
    std::shared_ptr<std::atomic<bool>> mIsAbandoned;
    std::chrono::steady_clock::time_point mSubmitted;
    std::vector<char> mDrained;
    std::size_t mDrainLeft = 0;
    bool mIsBusy = false;
    bool mIsReadingBody = false;
    bool mHasUnreadBody = false;
};

}  // namespace qv::recognition
