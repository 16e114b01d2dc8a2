#pragma once

#include "Page/PageHandler.h"
#include "Page/PageServer.h"

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/thread_pool.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http.hpp>

#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace qvhost {

class PageSession;

/// What the sessions of one server share. Everything in it belongs to the server's thread.
struct PageServerState {
    const PageServerLimits& limits;
    boost::asio::thread_pool& workers;
    PageHandler* handler = nullptr;
    std::set<PageSession*> sessions{};
    std::size_t bodyBytes = 0;
    bool isStopping = false;
};

/// One connection: reads a request, has it answered, and begins again. Keeps itself alive while it has something under
/// way. Lives on the server's thread.
class PageSession : public std::enable_shared_from_this<PageSession> {
  public:
    PageSession(boost::asio::ip::tcp::socket socket, PageServerState& state);
    ~PageSession();
    PageSession(const PageSession&) = delete;
    PageSession& operator=(const PageSession&) = delete;

    void start() { readHeader(); }
    void close();

  private:
    using Error = boost::beast::error_code;
    template <typename Body>
    using Response = boost::beast::http::response<Body>;

    void readHeader();
    void onHeader(Error error);
    void onBrokenRequest(Error error);
    /// Why the body is not taken; 0 when it is.
    unsigned refusal();
    void readBody();
    void onBody(Error error);
    void handle();

    void send(PageAnswer answer);
    void sendFile(const PageAnswer& answer);
    template <typename Body>
    void write(Response<Body>& response, const PageAnswer& answer);
    void onSent(Error error, bool keepsOpen);
    void drain();
    void releaseBody();

    PageServerState& mState;
    boost::beast::tcp_stream mStream;
    boost::beast::flat_buffer mBuffer;
    std::optional<boost::beast::http::request_parser<boost::beast::http::string_body>> mParser;
    std::optional<Response<boost::beast::http::string_body>> mResponse;
    std::optional<Response<boost::beast::http::file_body>> mFileResponse;
    PageRequest mRequest;
    std::size_t mReservedBytes = 0;
    std::vector<char> mDrained;
    std::size_t mDrainLeft = 0;
    bool mHasUnreadBody = false;
};

}  // namespace qvhost
