#include "Support/UntrustedTLSServer.h"

#include "Support/LoopbackListener.h"
#include "Support/ScriptedRequest.h"

#include <openssl/evp.h>
#include <openssl/ssl.h>
#include <openssl/x509v3.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <utility>

namespace testsupport {

namespace {

using Key = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
using Certificate = std::unique_ptr<X509, decltype(&X509_free)>;
using Context = std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)>;
using Session = std::unique_ptr<SSL, decltype(&SSL_free)>;

Certificate makeCertificate(EVP_PKEY* key, const TLSCertificateOptions& options) {
    Certificate certificate(X509_new(), X509_free);
    X509_set_version(certificate.get(), 2);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), options.validFrom);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), options.validUntil);
    X509_set_pubkey(certificate.get(), key);
    X509_NAME* const name = X509_get_subject_name(certificate.get());
    const auto* address = reinterpret_cast<const unsigned char*>(options.address.c_str());
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, address, -1, -1, 0);
    X509_set_issuer_name(certificate.get(), name);
    X509_EXTENSION* const extension =
        X509V3_EXT_conf_nid(nullptr, nullptr, NID_subject_alt_name, ("IP:" + options.address).c_str());
    X509_add_ext(certificate.get(), extension, -1);
    X509_EXTENSION_free(extension);
    X509_sign(certificate.get(), key, EVP_sha256());
    return certificate;
}

Context makeContext(const TLSCertificateOptions& options) {
    Context context(SSL_CTX_new(TLS_server_method()), SSL_CTX_free);
    const Key key(EVP_EC_gen("P-256"), EVP_PKEY_free);
    const Certificate certificate = makeCertificate(key.get(), options);
    if (SSL_CTX_use_certificate(context.get(), certificate.get()) != 1 ||
        SSL_CTX_use_PrivateKey(context.get(), key.get()) != 1) {
        throw std::runtime_error("The test server has no certificate");
    }
    return context;
}

void readOnce(SSL* session, std::string& text) {
    std::array<char, 4096> buffer{};
    const int count = SSL_read(session, buffer.data(), static_cast<int>(buffer.size()));
    if (count > 0) text.append(buffer.data(), static_cast<std::size_t>(count));
}

/// Appends what comes until the text holds a whole request; false when the connection ends before.
bool readRequest(SSL* session, std::string& text) {
    constexpr std::string_view kEnd = "\r\n\r\n";
    for (std::size_t before = std::string::npos; text.size() != before;) {
        before = text.size();
        readOnce(session, text);
        const std::size_t end = text.find(kEnd);
        if (end == std::string::npos) continue;
        const std::size_t head = end + kEnd.size();
        if (text.size() >= head + ScriptedRequest::fromHead(text.substr(0, head)).contentLength()) return true;
    }
    return false;
}

}  // namespace

struct UntrustedTLSServer::State {
    explicit State(const TLSCertificateOptions& options) : context(makeContext(options)) {}

    Context context;
    std::string answer;
    LoopbackListener listener{8};
    mutable std::mutex mutex;
    int connections = 0;
    std::string received;
    std::thread thread;

    void acceptAll();
    void serve(int socket);
};

void UntrustedTLSServer::State::serve(int socket) {
    const Session session(SSL_new(context.get()), SSL_free);
    SSL_set_fd(session.get(), socket);
    std::string request;
    if (SSL_accept(session.get()) == 1) {
        if (answer.empty()) {
            readOnce(session.get(), request);
        } else if (readRequest(session.get(), request)) {
            SSL_write(session.get(), answer.data(), static_cast<int>(answer.size()));
            SSL_shutdown(session.get());
        }
    }
    const std::lock_guard lock(mutex);
    received += request;
}

void UntrustedTLSServer::State::acceptAll() {
    // The library writes without looking; the client may be gone, and its signal would be taken for the client's fault.
    sigset_t brokenPipe;
    sigemptyset(&brokenPipe);
    sigaddset(&brokenPipe, SIGPIPE);
    ::pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
    while (true) {
        const int socket = listener.accept();
        if (socket < 0) return;
        {
            const std::lock_guard lock(mutex);
            ++connections;
        }
        serve(socket);
        ::close(socket);
    }
}

UntrustedTLSServer::UntrustedTLSServer(const TLSCertificateOptions& options, std::string answer)
    : mState(std::make_unique<State>(options)) {
    mState->answer = std::move(answer);
    mState->thread = std::thread([state = mState.get()] { state->acceptAll(); });
}

UntrustedTLSServer::~UntrustedTLSServer() {
    mState->listener.stop();
    mState->thread.join();
}

std::string UntrustedTLSServer::url() const {
    return "https://127.0.0.1:" + std::to_string(mState->listener.port()) + "/";
}

std::string UntrustedTLSServer::certificate() const {
    X509* const certificate = SSL_CTX_get0_certificate(mState->context.get());
    unsigned char* bytes = nullptr;
    const int size = i2d_X509(certificate, &bytes);
    std::string copy(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(std::max(size, 0)));
    OPENSSL_free(bytes);
    return copy;
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
