#include "Package/Hardening.h"
#include "Package/InstalledPackage.h"
#include "Recognition/Client.h"
#include "Support/ReadFile.h"
#include "Support/ServerProcess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <regex>
#include <set>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using namespace packagetest;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;

/// The packages, made of what is built, and a system of their own that they are installed into. Making them takes a
/// while: what is found out about them is one test.
class DebianPackages : public testing::Test {
  protected:
    void SetUp() override {
#if !QV_MAKES_PACKAGES
        GTEST_SKIP() << "Packages are made of what is built to be released";
#endif
        if (::geteuid() != 0) GTEST_SKIP() << "dpkg installs only for root";
    }

    fs::path root() const {
        return mFolder / "root";
    }
    std::string at(const std::string& path) const {
        return root().string() + path;
    }

    std::vector<std::string> packages() const {
        std::vector<std::string> files;
        for (const auto& entry : fs::directory_iterator(mFolder / "packages")) {
            if (entry.path().extension() == ".deb") files.push_back(entry.path().string());
        }
        std::sort(files.begin(), files.end());
        return files;
    }

    static std::string field(const std::string& package, const std::string& name) {
        std::string text = run("dpkg-deb", {"-f", package, name}).output;
        text.erase(std::min(text.find('\n'), text.size()));
        return text;
    }

    void make() {
        testsupport::ProcessCall call;
        call.program = "/usr/bin/env";
        call.arguments = {"cpack",
                          "-G",
                          "DEB",
                          "--config",
                          QV_BINARY_DIR "/CPackConfig.cmake",
                          "-B",
                          (mFolder / "packages").string()};
        // Half a minute on a machine that has nothing else to do.
        call.limit = std::chrono::seconds(500);
        const auto result = testsupport::runProcess(call);
        ASSERT_EQ(result.status, 0) << result.output << result.error;
        for (const auto& package : packages())
            mNames.insert(field(package, "Package"));
        EXPECT_THAT(mNames, IsSupersetOf({"libqvcardscan0", "libqvcardscan-dev", "qvcardscan", "qvcardrecod"}));
#ifdef QV_WITH_GLIB
        EXPECT_TRUE(mNames.contains("libqvcardscan-glib0"));
#endif
#ifdef QV_WITH_QT
        EXPECT_TRUE(mNames.contains("libqvcardscan-qt0"));
#endif
    }

    /// Every package says what it needs, and Debian has it: it is installed here, since this was built.
    void expectDependenciesThatThereAre() {
        for (const auto& package : packages()) {
            std::istringstream needs(field(package, "Depends"));
            for (std::string need; std::getline(needs, need, ',');) {
                const std::string name = std::regex_replace(need, std::regex("^ *([^ |]+).*$"), "$1");
                if (!mNames.contains(name)) run("dpkg-query", {"--show", name});
            }
            EXPECT_THAT(field(package, "Version"), ContainsRegex("^[0-9.]+-1$"));
        }
        const std::string server = field(packageOf("qvcardrecod"), "Depends");
        for (const char* name : {"libtesseract5 ", "libopencv-imgproc406", "libphonenumber8", "tesseract-ocr-eng"})
            EXPECT_THAT(server, HasSubstr(name));
        const std::string version = field(packageOf("qvcardscan"), "Version");
        EXPECT_THAT(field(packageOf("qvcardscan"), "Depends"), HasSubstr("libqvcardscan0 (= " + version + ")"));
        EXPECT_THAT(field(packageOf("libqvcardscan-dev"), "Depends"), HasSubstr("libqvcardscan0 (= " + version + ")"));
    }

    std::string packageOf(const std::string& name) const {
        for (const auto& package : packages()) {
            if (fs::path(package).filename().string().starts_with(name + "_")) return package;
        }
        return {};
    }

    /// dpkg over the root of its own; what the packages need besides is taken from the system that this runs on.
    void dpkg(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--root=" + root().string(), "--log=" + (mFolder / "dpkg.log").string(),
                                             "--force-depends", "--force-script-chrootless"});
        run("dpkg", std::move(arguments));
    }

    void install() {
        for (const char* folder : {"info", "updates", "triggers"})
            fs::create_directories(root() / "var/lib/dpkg" / folder);
        mFolder.write("root/var/lib/dpkg/status", "");
        std::vector<std::string> arguments = packages();
        arguments.insert(arguments.begin(), "--install");
        dpkg(std::move(arguments));
    }

    void expectItsUserAndToken() {
        EXPECT_THAT(testsupport::readFile(at("/etc/passwd")), HasSubstr("qvcardrecod:"));
        EXPECT_THAT(token(), ContainsRegex("^[0-9a-f]{48}$"));
        const auto rights = fs::status(at("/etc/qvcardrecod/token")).permissions();
        EXPECT_EQ(rights, fs::perms::owner_read | fs::perms::owner_write);
    }

    std::string token() const {
        std::string text = testsupport::readFile(at("/etc/qvcardrecod/token"));
        text.erase(std::min(text.find('\n'), text.size()));
        return text;
    }

    void expectFilesInTheirPlaces() {
        for (const char* file :
             {"/usr/share/man/man1/qvcardscan.1.gz", "/usr/share/man/man8/qvcardrecod.8.gz",
              "/usr/share/bash-completion/completions/qvcardscan", "/usr/share/zsh/vendor-completions/_qvcardrecod",
              "/usr/share/fish/vendor_completions.d/qvcardscan.fish", "/usr/lib/systemd/system/qvcardrecod.service",
              "/usr/lib/systemd/system/qvcardrecod@.service", "/etc/default/qvcardrecod",
              "/usr/share/doc/qvcardrecod/examples/nginx/qvcardrecod.conf",
              "/usr/share/doc/qvcardrecod/operating-the-server.md", "/usr/share/doc/qvcardrecod/server-protocol.md",
              "/usr/share/doc/libqvcardscan-dev/host-guide.md", "/usr/lib/pkgconfig/qvcardscan-c.pc",
              "/usr/include/qvcardscan.h", "/usr/share/doc/libqvcardscan0/changelog.gz",
              "/usr/share/doc/qvcardscan/copyright"}) {
            EXPECT_TRUE(fs::exists(at(file))) << file;
        }
        for (const auto& entry : fs::directory_iterator(at("/usr/lib")))
            if (entry.path().string().find(".so") != std::string::npos) expectLibrary(entry.path());
        for (const char* program : {"/usr/bin/qvcardscan", "/usr/bin/qvcardrecod"})
            EXPECT_THAT(missingHardening(at(program)), IsEmpty()) << program;
    }

    static void expectLibrary(const fs::path& library) {
        const std::string facts = run("objdump", {"-p", library}).output;
        EXPECT_THAT(
            facts,
            ContainsRegex("SONAME +" + library.filename().string().substr(0, library.filename().string().find(".so")) +
                          "\\.so\\.[0-9]\n"));
        EXPECT_THAT(missingHardening(library), IsEmpty()) << library;
    }

    Environment environment() const {
        return {{"LD_LIBRARY_PATH", at("/usr/lib")}, {"PATH", "/usr/bin:/bin"}, {"HOME", mFolder.path().string()}};
    }

    /// The command line finds the server and the library finds its templates beside it.
    void expectItScans() {
        const auto scan = run(at("/usr/bin/qvcardscan"),
                              {"scan", QV_SOURCE_DIR "/Samples/plain.jpg", "-o", mFolder / "out"}, environment());
        EXPECT_THAT(scan.output, HasSubstr("Clara Whitcombe"));
        EXPECT_THAT(testsupport::readFile(mFolder / "out/note.qvml"), HasSubstr("Clara Whitcombe"));
    }

    void expectItServes() {
        const testsupport::ServerProcess server([this](int port) {
            return testsupport::ServerCall{
                .program = at("/usr/bin/qvcardrecod"),
                .arguments = {"--port", std::to_string(port), "--token-file", at("/etc/qvcardrecod/token")},
                .environment = {},
                .log = mFolder / "server.log"};
        });
        const std::string picture = testsupport::readFile(QV_SOURCE_DIR "/Samples/plain.jpg");
        EXPECT_THAT(post(server.port(), picture, token()), HasSubstr("Clara Whitcombe"));
        EXPECT_THAT(post(server.port(), picture, "another"), HasSubstr(" 401 "));
    }

    static std::string post(int port, const std::string& picture, const std::string& token) {
        qv::recognition::Client client(static_cast<std::uint16_t>(port));
        client.send(qv::recognition::post(picture, "auth: " + token + "\r\n"));
        return client.readAll();
    }

    void expectItServesProjects() {
        const std::string host = mFolder / "host";
        run("sh",
            {"-c", QV_CXX_COMPILER " \"$1\" -o \"$2\" $(pkg-config --cflags --libs QVCardScan)", "sh",
             QV_SOURCE_DIR "/Examples/minimal/main.cpp", host},
            {{"PKG_CONFIG_PATH", at("/usr/lib/pkgconfig")}});
        Environment surroundings = environment();
        surroundings["QVCARDSCAN_TOKEN"] = "a-token";
        EXPECT_THAT(run(host, {mServer.url(), picture()}, surroundings).output, HasSubstr("Ada Example"));
    }

    /// The examples as the package brings them, built with nothing but what the packages brought.
    void expectItServesItsExamples() {
        const std::string examples = at("/usr/share/doc/libqvcardscan-dev/examples");
        const std::string programs = mFolder / "examples";
        run("cmake", {"-S", examples, "-B", programs, "-G", "Ninja", "-DCMAKE_PREFIX_PATH=" + at("/usr"),
                      "-DCMAKE_CXX_COMPILER=" QV_CXX_COMPILER});
        run("cmake", {"--build", programs});
        Environment surroundings = environment();
        surroundings["QVCARDSCAN_TOKEN"] = "a-token";
        for (const char* name : {"minimal", "c-host"})
            EXPECT_THAT(run(programs + "/" + name, {mServer.url(), picture()}, surroundings).output,
                        HasSubstr("Ada Example"));
#ifdef QV_WITH_GLIB
        EXPECT_THAT(run(programs + "/glib-host", {mServer.url(), picture()}, surroundings).output,
                    HasSubstr("Ada Example"));
#endif
        EXPECT_THAT(
            run("/usr/bin/python3", {examples + "/python/card.py", mServer.url(), picture()}, surroundings).output,
            HasSubstr("Ada Example"));
    }

    static std::string picture() {
        return testsupport::testsFolder() / "Host/Data/front.jpg";
    }

    /// As systemd reads them, but for the place of the program, which is not installed in this system.
    void expectSoundUnits() {
        for (const char* unit : {"qvcardrecod.service", "qvcardrecod@.service"}) {
            std::string text = testsupport::readFile(at("/usr/lib/systemd/system/") + unit);
            text.replace(text.find("/usr/bin/qvcardrecod"), std::string("/usr/bin").size(), at("/usr/bin"));
            const auto verdict = run("systemd-analyze", {"verify", "--man=no", mFolder.write(unit, text)});
            EXPECT_THAT(verdict.error, IsEmpty()) << unit;
        }
    }

    /// What the server made goes as well when it is purged.
    void expectNothingLeft() {
        dpkg({"--purge", "qvcardrecod"});
        EXPECT_FALSE(fs::exists(at("/etc/qvcardrecod")));
        EXPECT_FALSE(fs::exists(at("/etc/default/qvcardrecod")));
        std::vector<std::string> rest(mNames.begin(), mNames.end());
        std::erase(rest, "qvcardrecod");
        rest.insert(rest.begin(), "--purge");
        dpkg(std::move(rest));
        EXPECT_FALSE(fs::exists(root() / "usr"));
    }

    testsupport::TemporaryFolder mFolder;
    testsupport::ScriptedServer mServer;
    std::set<std::string> mNames;
};

TEST_F(DebianPackages, AreInstalledUsedAndPurged) {
    mServer.respond(testsupport::ScriptedServer::answer(200, kAnswer));
    make();
    if (HasFatalFailure()) return;
    expectDependenciesThatThereAre();
    install();
    expectItsUserAndToken();
    expectFilesInTheirPlaces();
    expectItScans();
    expectItServes();
    expectItServesProjects();
    expectItServesItsExamples();
    expectSoundUnits();
    expectNothingLeft();
}

/// Both units give the server the same rights.
TEST(SystemdUnits, AreHardenedAlike) {
    const auto rights = [](const std::string& unit) {
        const std::string text = testsupport::readFile(QV_SOURCE_DIR "/Packaging/systemd/" + unit);
        std::string lines;
        std::istringstream all(text.substr(text.find("CapabilityBoundingSet=")));
        for (std::string line; std::getline(all, line);)
            lines += line.starts_with('#') ? "" : line + '\n';
        return lines;
    };
    EXPECT_EQ(rights("qvcardrecod.service"), rights("qvcardrecod@.service"));
    const auto verdict = runAny("systemd-analyze", {"security", "--offline=yes", "--threshold=20", "--no-pager",
                                                    QV_SOURCE_DIR "/Packaging/systemd/qvcardrecod.service"});
    EXPECT_EQ(verdict.status, 0) << "its exposure is more than 2.0 of 10\n" << verdict.output;
}

}  // namespace
