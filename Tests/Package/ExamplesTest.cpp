#include "InstalledPackage.h"
#include "Support/ReadFile.h"

#include <string>

namespace packagetest {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// Runs a program on a screen of its own, whose number the X server chooses.
constexpr const char* kOnScreen = R"(
pipe=$0.pipe
mkfifo "$pipe"
Xvfb -displayfd 3 -screen 0 1280x1024x24 3>"$pipe" 2>/dev/null &
server=$!
read -r number <"$pipe"
rm "$pipe"
DISPLAY=:$number "$@"
status=$?
kill $server
exit $status
)";

class Examples : public InstalledPackage {
  protected:
    /// All of them, as a project that knows nothing but the prefix.
    void build() const {
        run("cmake", {"-S", examples(), "-B", programs(), "-G", "Ninja", "-DCMAKE_PREFIX_PATH=" + prefix(),
                      "-DCMAKE_CXX_COMPILER=" QV_CXX_COMPILER, "-DCMAKE_CXX_FLAGS=" QV_CXX_FLAGS,
                      "-DCMAKE_C_FLAGS=" QV_CXX_FLAGS});
        run("cmake", {"--build", programs()});
    }
    std::string programs() const { return mFolder / "examples"; }

    void expectMinimalReadsACard() {
        const auto result = run(programs() + "/minimal", {mServer.url(), picture()}, environment());
        EXPECT_THAT(result.output, StartsWith("Ada Example\n0 errors\n<"));
    }
    void expectGLibHostFindsThePerson() {
        mFolder.write("contacts/ada.vcf",
                      "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:1\r\nFN:Ada Example\r\nEMAIL:ada@example.com\r\n"
                      "ORG:Example Works\r\nEND:VCARD\r\n");
        const auto result =
            run(programs() + "/glib-host", {mServer.url(), picture(), mFolder / "contacts"}, environment());
        EXPECT_EQ(result.output, "read: Ada Example, 0 errors\nsearched: type 0, company Example Works\n");
        const auto failed = runAny(programs() + "/glib-host", {"http://127.0.0.1:1/", picture()}, environment());
        EXPECT_EQ(failed.status, 1);
        EXPECT_EQ(failed.output, "read: nobody, 1 errors\n");
    }
    void expectQtHostShowsTheNote() {
        const std::string window = mFolder / "window.png";
        const std::string script = mFolder.write("on-screen", kOnScreen);
        const auto onScreen = [&](std::vector<std::string> arguments) {
            arguments.insert(arguments.begin(), {script, programs() + "/qt-host"});
            return runAny("sh", std::move(arguments), environment());
        };
        const auto result = onScreen({"--grab", window, mServer.url(), picture()});
        EXPECT_EQ(result.status, 0) << result.output << result.error;
        EXPECT_THAT(testsupport::readFile(window), StartsWith("\x89PNG"));
        EXPECT_EQ(onScreen({"--grab", window, "http://127.0.0.1:1/", picture()}).status, 1);
        EXPECT_EQ(onScreen({"--grab", window, mServer.url(), examples() + "/CMakeLists.txt"}).status, 1)
            << "no picture";
    }
};

TEST_F(Examples, RunAgainstTheInstalledLibrary) {
    build();
    expectMinimalReadsACard();
#ifdef QV_WITH_GLIB
    expectGLibHostFindsThePerson();
#endif
#ifdef QV_WITH_QT
    expectQtHostShowsTheNote();
#endif
}

/// The instrumentation of a library that a foreign program loads must be there before everything else.
Environment withInstrumentation(Environment environment) {
    for (const char* name : {"address", "thread"}) {
        if (std::string(QV_CXX_FLAGS).find("-fsanitize=" + std::string(name)) == std::string::npos) continue;
        const std::string library = name == std::string("address") ? "libasan.so" : "libtsan.so";
        std::string path = run(QV_CXX_COMPILER, {"-print-file-name=" + library}).output;
        path.erase(path.find_last_not_of('\n') + 1);
        environment["LD_PRELOAD"] = path;
        environment["ASAN_OPTIONS"] = "detect_leaks=0";
    }
    return environment;
}

TEST_F(Examples, PythonReadsACardThroughTheCInterface) {
    const std::string program = examples() + "/python/card.py";
    const auto around = withInstrumentation(environment());
    const auto result = run("/usr/bin/python3", {program, mServer.url(), picture()}, around);
    EXPECT_THAT(result.output, HasSubstr("\"text\": \"Ada Example\""));
    EXPECT_THAT(result.output, HasSubstr("\"search\": 0"));
    EXPECT_THAT(result.output, HasSubstr("qv-contact-note"));
    const auto failed = runAny("/usr/bin/python3", {program, "http://127.0.0.1:1/", picture()}, around);
    EXPECT_EQ(failed.status, 1);
    EXPECT_THAT(failed.error, HasSubstr("kQVCardProcessingErrorDomain 2: QVURLErrorDomain 7: Failed to "));
    const auto refused = runAny("/usr/bin/python3", {program, mServer.url(), program}, around);
    EXPECT_THAT(refused.error, HasSubstr("QVCInterfaceErrorDomain 2: This is no picture"));
}

}  // namespace
}  // namespace packagetest
