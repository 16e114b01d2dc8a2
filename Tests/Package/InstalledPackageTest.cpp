#include "InstalledPackage.h"

#include <string>

namespace packagetest {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

TEST_F(InstalledPackage, ServesAPkgConfigProject) {
    const std::string host = mFolder / "host";
    const std::string command =
        QV_CXX_COMPILER " " QV_CXX_FLAGS " \"$1\" -o \"$2\" $(pkg-config --cflags --libs QVCardScan)";
    run("sh", {"-c", command, "sh", examples() + "/minimal/main.cpp", host},
        {{"PKG_CONFIG_PATH", libraries() + "/pkgconfig"}});
    const auto result = run(host, {mServer.url(), picture()}, environment());
    EXPECT_THAT(result.output, StartsWith("Ada Example\n0 errors\n<"));
    EXPECT_EQ(mServer.requests().size(), 1U);
}

TEST_F(InstalledPackage, ServesAPkgConfigProjectInC) {
    const std::string host = mFolder / "c-host";
    const std::string command = "cc -std=c11 -Wall -Wextra -Wpedantic -Werror " QV_CXX_FLAGS
                                " \"$1\" -o \"$2\" $(pkg-config --cflags --libs qvcardscan-c)";
    run("sh", {"-c", command, "sh", examples() + "/c/main.c", host}, {{"PKG_CONFIG_PATH", libraries() + "/pkgconfig"}});
    const auto result = run(host, {mServer.url(), picture()}, environment());
    EXPECT_THAT(result.output, StartsWith("field 1: Ada Example\nfield 2: Engineer\nfield 4: "));
    EXPECT_THAT(result.output, HasSubstr("search: type 0, not found\n"));
    const auto failed = runAny(host, {"http://127.0.0.1:1/", picture()}, environment());
    EXPECT_EQ(failed.status, 1);
    EXPECT_THAT(
        failed.error,
        StartsWith("The card could not be read: kQVCardProcessingErrorDomain 2: QVURLErrorDomain 7: Failed to "));
}

TEST_F(InstalledPackage, BringsHeadersThatStandOnTheirOwn) {
    std::string everything;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(prefix() + "/include")) {
        if (entry.is_regular_file()) everything += "#include \"" + entry.path().string() + "\"\n";
    }
    ASSERT_THAT(everything, HasSubstr("QVCardScan/QVBizCardManager.h"));
    EXPECT_THAT(everything, testing::Not(HasSubstr("+Write.h")));
    const auto file = mFolder.write("all.cpp", everything + "int main() {}\n");
    const auto result = run(QV_CXX_COMPILER, {"-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Werror",
                                              "-fsyntax-only", "-I", prefix() + "/include", file});
    EXPECT_THAT(result.error, IsEmpty());
}

/// What the host's guide names comes with the one header that it tells hosts to include.
TEST_F(InstalledPackage, BringsTheWholeHostsGuideInOneHeader) {
    const auto file = mFolder.write("one.cpp", R"(#include <QVCardScan/QVCardScan.h>
auto contacts() { return std::make_shared<QVVCardFolder>("contacts"); }
auto finder() { return std::make_shared<QVWebFingerProvider>(); }
auto main2() { return std::make_shared<qv::PumpedExecutor>(); }
using Address = QVCardDAVAddressBook; using Profiles = QVGravatarProvider; using Links = QVLinkFetcher;
int main() {
    qv::Log::setSink([](std::string_view) {});
    qv::AssertionHandler::setHandler(nullptr);
    qv::Bundle::setResourceFolder("");
    qv::MainQueue::setExecutor(main2());
    QVAddressBookController::sharedController()->setAddressBook(contacts());
    QVSocialSearchManager::sharedManager()->addProvider(finder());
    const auto token = qv::NotificationCenter::defaultCenter().addObserverForName(
        kQVSocialSearchFinishedNotification,
        [](const qv::Notification& notification) { QVSocialSearchResult::fromNotification(notification); });
    return qv::lowerHexMD5(qv::Image::initWithData({})->encodedData()).empty() ||
           qv::kErrorDescriptionKey.empty() || kQVCardProcessingUnderlyingErrorKey.empty();
}
)");
    const auto result = run(QV_CXX_COMPILER, {"-std=c++20", "-fsyntax-only", "-I", prefix() + "/include", file});
    EXPECT_THAT(result.error, IsEmpty());
}

TEST_F(InstalledPackage, ExportsOnlyItsOwnNames) {
    const std::string command =
        "nm -D --defined-only --demangle \"$1\" | awk '$2 ~ /[TBD]/ && !/ (qv::|QV|kQV|typeinfo|vtable|thunk|"
        "construction vtable|non-virtual|virtual|imageByScaling|JPEGRepresentation|_init|_fini)/'";
    for (const char* library : {"libQVPlatform.so", "libQVCardScan.so", "libQVSocialSearch.so"}) {
        const auto result = run("sh", {"-c", command, "sh", prefix() + "/" QV_INSTALL_LIBDIR "/" + library});
        EXPECT_THAT(result.output, IsEmpty()) << library;
    }
}

TEST_F(InstalledPackage, ScansFromItsPrefix) {
    const auto result = run(prefix() + "/bin/qvcardscan", {"scan", picture(), "--server", mServer.url()},
                            {{"QVCARDSCAN_TOKEN", "a-token"}});
    EXPECT_THAT(result.output, HasSubstr("Ada Example"));
}

}  // namespace
}  // namespace packagetest
