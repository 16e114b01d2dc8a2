#include "Page/PageServer.h"

#include "Page/PageSession.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/asio/steady_timer.hpp>

#include <csignal>
#include <utility>

namespace qvhost {
namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using ErrorCode = boost::system::error_code;

constexpr std::size_t kWorkers = 3;
constexpr std::chrono::milliseconds kAcceptPause{100};
/// For the last answers to go out.
constexpr std::chrono::milliseconds kFarewell{300};

/// As by nohup, or by a shell that put the program into the background.
bool isIgnored(int signal) {
    struct sigaction now {};
    return ::sigaction(signal, nullptr, &now) == 0 && now.sa_handler == SIG_IGN;
}

}  // namespace

class PageServer::Implementation {
  public:
    explicit Implementation(PageServerLimits limits) : mLimits(limits) {}

    ErrorCode open(const std::string& name, std::uint16_t port) {
        ErrorCode error;
        const auto address = asio::ip::make_address(name, error);
        if (error) return error;
        const tcp::endpoint endpoint(address, port);
        mAcceptor.open(endpoint.protocol(), error);
        if (!error) mAcceptor.set_option(asio::socket_base::reuse_address(true), error);
        if (!error) mAcceptor.bind(endpoint, error);
        if (!error) mAcceptor.listen(asio::socket_base::max_listen_connections, error);
        if (!error) mPort = mAcceptor.local_endpoint(error).port();
        return error;
    }

    std::uint16_t port() const { return mPort; }

    void run(PageHandler& handler) {
        mState.handler = &handler;
        stopOnSignals();
        accept();
        tick();
        mContext.run();
        mWorkers.join();
    }

    void stop() {
        asio::post(mContext, [this] { stopHere(); });
    }

  private:
    void stopOnSignals() {
        ErrorCode ignored;
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
            if (!isIgnored(signal)) mSignals.add(signal, ignored);
        }
        mSignals.async_wait([this](ErrorCode error, int) {
            if (!error) stopHere();
        });
    }

    void accept() {
        mAcceptor.async_accept([this](ErrorCode error, tcp::socket socket) {
            if (mState.isStopping) return;
            // Out of descriptors: going on at once would only spin.
            if (error) return acceptLater();
            if (mState.sessions.size() < mLimits.connections)
                std::make_shared<PageSession>(std::move(socket), mState)->start();
            accept();
        });
    }

    void acceptLater() {
        mPause.expires_after(kAcceptPause);
        mPause.async_wait([this](ErrorCode error) {
            if (!error && !mState.isStopping) accept();
        });
    }

    void tick() {
        mTick.expires_after(std::chrono::seconds(1));
        mTick.async_wait([this](ErrorCode error) {
            if (error || mState.isStopping) return;
            mState.handler->tick();
            tick();
        });
    }

    void stopHere() {
        if (std::exchange(mState.isStopping, true)) return;
        ErrorCode ignored;
        mAcceptor.close(ignored);
        mPause.cancel();
        mTick.cancel();
        mSignals.cancel(ignored);
        mState.handler->stop();
        mTick.expires_after(kFarewell);
        mTick.async_wait([this](ErrorCode) { closeSessions(); });
    }

    void closeSessions() {
        for (PageSession* session : std::set<PageSession*>(mState.sessions))
            session->close();
    }

    const PageServerLimits mLimits;
    // In this order: sessions that the context still holds look at the state when they end, and workers post to the
    // context.
    asio::thread_pool mWorkers{kWorkers};
    PageServerState mState{mLimits, mWorkers};
    asio::io_context mContext{1};
    tcp::acceptor mAcceptor{mContext};
    asio::steady_timer mPause{mContext};
    asio::steady_timer mTick{mContext};
    asio::signal_set mSignals{mContext};
    std::uint16_t mPort = 0;
};

PageServer::PageServer(std::unique_ptr<Implementation> implementation) : mImplementation(std::move(implementation)) {
}

PageServer::~PageServer() = default;

std::unique_ptr<PageServer> PageServer::listen(const std::string& address, std::uint16_t port, PageServerLimits limits,
                                               std::string& error) {
    auto implementation = std::make_unique<Implementation>(limits);
    if (const ErrorCode problem = implementation->open(address, port)) {
        error = problem.message();
        return nullptr;
    }
    return std::unique_ptr<PageServer>(new PageServer(std::move(implementation)));
}

std::uint16_t PageServer::port() const {
    return mImplementation->port();
}

void PageServer::run(PageHandler& handler) {
    mImplementation->run(handler);
}

void PageServer::stop() {
    mImplementation->stop();
}

}  // namespace qvhost
