#pragma once

#include "Recognition/Client.h"
#include "Support/ReadFile.h"
#include "Support/RunProcess.h"
#include "Support/ServerProcess.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// nginx in front of recognition servers, each a process of its own on loopback.
namespace balanced {

inline constexpr const char* kToken = "sesame";

/// What a server says to these bytes, up to the connection's end.
inline std::string ask(int port, const std::string& request) {
    qv::recognition::Client client(static_cast<std::uint16_t>(port));
    client.send(request);
    return client.readAll();
}

inline std::string get(const std::string& path) {
    return "GET " + path + " HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n";
}

/// A sample picture as a client's request.
inline std::string postOf(const std::string& sample) {
    return qv::recognition::post(
        testsupport::readFile(std::filesystem::path(QV_SOURCE_DIR) / "Samples" / sample),
        std::string("content-language: en\r\nContent-Type: image/jpeg\r\nauth: ") + kToken + "\r\n");
}

/// One recognition server.
class Recod {
  public:
    explicit Recod(const std::string& waitingPlaces = "8")
        : mProcess([&](int port) {
              return testsupport::ServerCall{
                  .program = QV_BINARY_DIR "/bin/qvcardrecod",
                  .arguments = {"--port", std::to_string(port), "--token-file", mFolder.write("token", kToken).string(),
                                "--queue", waitingPlaces},
                  .environment = {},
                  .log = mFolder / "log"};
          }) {}

    int port() const { return mProcess.port(); }
    void kill() { mProcess.kill(); }

    /// One figure of its metrics.
    double figure(const std::string& sample) const {
        const std::string metrics = qv::recognition::bodyOf(ask(port(), get("/metrics")));
        const auto at = metrics.find('\n' + sample + ' ');
        if (at == std::string::npos) throw std::runtime_error("no figure " + sample);
        return std::stod(metrics.substr(at + sample.size() + 2));
    }
    double finished() const { return figure("qvcardrecod_requests_total{outcome=\"read\"}"); }

  private:
    testsupport::TemporaryFolder mFolder;
    testsupport::ServerProcess mProcess;
};

/// nginx with the configuration that is delivered; only its addresses, and what a test asks for besides, are others.
class Nginx {
  public:
    using Changes = std::vector<std::pair<std::string, std::string>>;

    explicit Nginx(const std::vector<int>& servers, const Changes& changes = {}) {
        makeCertificate();
        mProcess = std::make_unique<testsupport::ServerProcess>([&](int port) {
            mFolder.write("site.conf", site(servers, port, changes));
            mFolder.write("nginx.conf", surroundings());
            return testsupport::ServerCall{
                .program = "/usr/sbin/nginx",
                .arguments = {"-p", mFolder.path().string(), "-c", (mFolder / "nginx.conf").string(), "-e",
                              (mFolder / "error.log").string()},
                .environment = {},
                .log = mFolder / "log"};
        });
    }

    int port() const { return mProcess->port(); }
    int portWithTLS() const { return port() + 1; }
    std::string url() const { return "http://127.0.0.1:" + std::to_string(port()) + "/"; }
    std::string certificate() const { return (mFolder / "certificate.pem").string(); }
    std::string errorLog() const { return testsupport::readFile(mFolder / "error.log"); }
    std::string accessLog() const { return testsupport::readFile(mFolder / "access.log"); }

  private:
    void makeCertificate() const {
        testsupport::ProcessCall call;
        call.program = "/usr/bin/openssl";
        call.arguments = {"req",
                          "-x509",
                          "-newkey",
                          "ec",
                          "-pkeyopt",
                          "ec_paramgen_curve:P-256",
                          "-nodes",
                          "-days",
                          "1",
                          "-subj",
                          "/CN=cards.example.com",
                          "-addext",
                          "subjectAltName=DNS:cards.example.com",
                          "-keyout",
                          (mFolder / "key.pem").string(),
                          "-out",
                          certificate()};
        if (testsupport::runProcess(call).status != 0) throw std::runtime_error("openssl makes no certificate");
    }

    /// Replaces a text that has to be there exactly once: the configuration that is tried is the one that is delivered.
    static void replace(std::string& text, const std::string& old, const std::string& other) {
        const auto at = text.find(old);
        if (at == std::string::npos || text.find(old, at + 1) != std::string::npos)
            throw std::runtime_error("not once in the configuration: " + old);
        text.replace(at, old.size(), other);
    }

    std::string site(const std::vector<int>& servers, int port, const Changes& changes) const {
        const auto delivered = std::filesystem::path(QV_SOURCE_DIR) / "Packaging/nginx/qvcardrecod.conf";
        std::string text = testsupport::readFile(delivered);
        std::string lines;
        for (const int server : servers)
            lines += "server 127.0.0.1:" + std::to_string(server) + " max_fails=0;\n";
        replace(text, "    server 127.0.0.1:8801 max_fails=0;\n    server 127.0.0.1:8802 max_fails=0;\n", lines);
        replace(
            text, "listen 443 ssl;",
            "listen 127.0.0.1:" + std::to_string(port) + "; listen 127.0.0.1:" + std::to_string(port + 1) + " ssl;");
        replace(text, "/etc/ssl/certs/cards.example.com.pem", certificate());
        replace(text, "/etc/ssl/private/cards.example.com.key", (mFolder / "key.pem").string());
        for (const auto& [old, other] : changes)
            replace(text, old, other);
        return text;
    }

    std::string surroundings() const {
        const std::string folder = mFolder.path().string();
        std::string text = "daemon off;\nmaster_process off;\npid " + folder + "/pid;\nerror_log " + folder +
                           "/error.log info;\nevents {}\nhttp {\naccess_log " + folder + "/access.log;\n";
        for (const char* kind : {"client_body", "proxy", "fastcgi", "uwsgi", "scgi"})
            text += std::string(kind) + "_temp_path " + folder + "/" + kind + ";\n";
        return text + "include " + folder + "/site.conf;\n}\n";
    }

    testsupport::TemporaryFolder mFolder;
    std::unique_ptr<testsupport::ServerProcess> mProcess;
};

}  // namespace balanced
