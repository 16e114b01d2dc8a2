#include "Server/HTTPServer.h"

#include "Server/Session.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/asio/steady_timer.hpp>

#include <csignal>
#include <optional>
#include <utility>

namespace qv::recognition {
namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using ErrorCode = boost::system::error_code;

constexpr std::chrono::milliseconds kAcceptPause{100};

}  // namespace

class HTTPServer::Implementation {
  public:
    Implementation(ServerOptions options, RecogniserFactory factory, Log log)
        : mOptions(std::move(options)),
          mLog(std::move(log)),
          mState{mOptions, mLog, nullptr, {}, {}, false},
          mPool(std::move(factory), mOptions.workers, mOptions.places),
          mAcceptor(mContext),
          mPause(mContext),
          mStopTimer(mContext),
          mSignals(mContext) {
        mState.pool = &mPool;
    }

    ErrorCode open() {
        ErrorCode error;
        const auto address = asio::ip::make_address(mOptions.address, error);
        if (error) return error;
        const tcp::endpoint endpoint(address, mOptions.port);
        mAcceptor.open(endpoint.protocol(), error);
        if (!error) mAcceptor.set_option(asio::socket_base::reuse_address(true), error);
        if (!error) mAcceptor.bind(endpoint, error);
        if (!error) mAcceptor.listen(asio::socket_base::max_listen_connections, error);
        if (!error) mPort = mAcceptor.local_endpoint(error).port();
        return error;
    }

    std::uint16_t port() const { return mPort; }

    bool run() {
        accept();
        mContext.run();
        return !mIsOverdue;
    }

    void stop() {
        asio::post(mContext, [this] { stopHere(); });
    }

    void stopOnSignals() {
        ErrorCode ignored;
        mSignals.add(SIGTERM, ignored);
        mSignals.add(SIGINT, ignored);
        mSignals.async_wait([this](ErrorCode error, int) {
            if (!error) stopHere();
        });
    }

  private:
    void accept() {
        mAcceptor.async_accept([this](ErrorCode error, tcp::socket socket) {
            if (mState.isStopping) return;
            // Out of descriptors: going on at once would only spin.
            if (error) return acceptLater();
            if (mState.sessions.size() < mOptions.connections)
                std::make_shared<Session>(std::move(socket), mState)->start();
            accept();
        });
    }

    void acceptLater() {
        mPause.expires_after(kAcceptPause);
        mPause.async_wait([this](ErrorCode error) {
            if (!error && !mState.isStopping) accept();
        });
    }

    void stopHere() {
        if (std::exchange(mState.isStopping, true)) return;
        ErrorCode ignored;
        mAcceptor.close(ignored);
        mPause.cancel();
        mSignals.cancel(ignored);
        mPool.stop();
        awaitSessions(std::chrono::steady_clock::now() + mOptions.stopTime);
    }

    /// Looks again and again rather than counting down, so that no way for a session to end can be forgotten. They are
    /// told again, too: one that has just got a piece of a body waits for the next when it is told, and does not hear.
    void awaitSessions(std::chrono::steady_clock::time_point end) {
        for (Session* session : std::set<Session*>(mState.sessions))
            session->stop();
        if (mState.sessions.empty()) return;
        if (std::chrono::steady_clock::now() >= end) {
            // Clients that do not take their answers are no work that is left undone.
            mIsOverdue = mPool.busy() > 0;
            return mContext.stop();
        }
        mStopTimer.expires_after(std::chrono::milliseconds(10));
        mStopTimer.async_wait([this, end](ErrorCode) { awaitSessions(end); });
    }

    const ServerOptions mOptions;
    const Log mLog;
    // In this order: sessions that the context still holds look at the state when they end, and workers post to the
    // context.
    ServerState mState;
    asio::io_context mContext{1};
    WorkerPool mPool;
    tcp::acceptor mAcceptor;
    asio::steady_timer mPause;
    asio::steady_timer mStopTimer;
    asio::signal_set mSignals;
    std::uint16_t mPort = 0;
    bool mIsOverdue = false;
};

HTTPServer::HTTPServer(std::unique_ptr<Implementation> implementation) : mImplementation(std::move(implementation)) {
}

HTTPServer::~HTTPServer() = default;

std::unique_ptr<HTTPServer> HTTPServer::listen(ServerOptions options, RecogniserFactory factory, Log log,
                                               std::string& error) {
    auto implementation = std::make_unique<Implementation>(std::move(options), std::move(factory), std::move(log));
    if (const ErrorCode problem = implementation->open()) {
        error = problem.message();
        return nullptr;
    }
    return std::unique_ptr<HTTPServer>(new HTTPServer(std::move(implementation)));
}

std::uint16_t HTTPServer::port() const {
    return mImplementation->port();
}

bool HTTPServer::run() {
    return mImplementation->run();
}

void HTTPServer::stop() {
    mImplementation->stop();
}

void HTTPServer::stopOnSignals() {
    mImplementation->stopOnSignals();
}

}  // namespace qv::recognition
