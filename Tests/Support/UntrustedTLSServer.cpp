#include "Support/UntrustedTLSServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <openssl/evp.h>
#include <openssl/ssl.h>
#include <openssl/x509v3.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace testsupport {

namespace {

using Key = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
using Certificate = std::unique_ptr<X509, decltype(&X509_free)>;
using Context = std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)>;
using Session = std::unique_ptr<SSL, decltype(&SSL_free)>;

Certificate makeCertificate(EVP_PKEY* key) {
    constexpr long kHour = 60 * 60;
    Certificate certificate(X509_new(), X509_free);
    X509_set_version(certificate.get(), 2);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -kHour);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), kHour);
    X509_set_pubkey(certificate.get(), key);
    X509_NAME* const name = X509_get_subject_name(certificate.get());
    const std::string address = "127.0.0.1";
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>(address.c_str()), -1,
                               -1, 0);
    X509_set_issuer_name(certificate.get(), name);
    X509_EXTENSION* const extension =
        X509V3_EXT_conf_nid(nullptr, nullptr, NID_subject_alt_name, ("IP:" + address).c_str());
    X509_add_ext(certificate.get(), extension, -1);
    X509_EXTENSION_free(extension);
    X509_sign(certificate.get(), key, EVP_sha256());
    return certificate;
}

Context makeContext() {
    Context context(SSL_CTX_new(TLS_server_method()), SSL_CTX_free);
    const Key key(EVP_EC_gen("P-256"), EVP_PKEY_free);
    const Certificate certificate = makeCertificate(key.get());
    if (SSL_CTX_use_certificate(context.get(), certificate.get()) != 1 ||
        SSL_CTX_use_PrivateKey(context.get(), key.get()) != 1) {
        throw std::runtime_error("The test server has no certificate");
    }
    return context;
}

}  // namespace

struct UntrustedTLSServer::State {
    Context context = makeContext();
    int listener = -1;
    int port = 0;
    mutable std::mutex mutex;
    int connections = 0;
    std::string received;
    std::thread thread;

    void listen();
    void acceptAll();
    void serve(int socket);
};

void UntrustedTLSServer::State::listen() {
    listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    socklen_t length = sizeof address;
    if (listener < 0 || ::bind(listener, generic, length) != 0 || ::listen(listener, 8) != 0 ||
        ::getsockname(listener, generic, &length) != 0) {
        throw std::runtime_error("The test server cannot listen on the loopback address");
    }
    port = ntohs(address.sin_port);
}

void UntrustedTLSServer::State::serve(int socket) {
    const Session session(SSL_new(context.get()), SSL_free);
    SSL_set_fd(session.get(), socket);
    std::array<char, 4096> buffer{};
    const int count = SSL_accept(session.get()) == 1 ? SSL_read(session.get(), buffer.data(), 4096) : 0;
    const std::lock_guard lock(mutex);
    if (count > 0) received.append(buffer.data(), static_cast<std::size_t>(count));
}

void UntrustedTLSServer::State::acceptAll() {
    while (true) {
        const int socket = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0) return;
        {
            const std::lock_guard lock(mutex);
            ++connections;
        }
        serve(socket);
        ::close(socket);
    }
}

UntrustedTLSServer::UntrustedTLSServer() : mState(std::make_unique<State>()) {
    mState->listen();
    mState->thread = std::thread([state = mState.get()] { state->acceptAll(); });
}

UntrustedTLSServer::~UntrustedTLSServer() {
    ::shutdown(mState->listener, SHUT_RDWR);
    mState->thread.join();
    ::close(mState->listener);
}

std::string UntrustedTLSServer::url() const {
    return "https://127.0.0.1:" + std::to_string(mState->port) + "/";
}

int UntrustedTLSServer::connectionCount() const {
    const std::lock_guard lock(mState->mutex);
    return mState->connections;
}

std::string UntrustedTLSServer::received() const {
    const std::lock_guard lock(mState->mutex);
    return mState->received;
}

}  // namespace testsupport
