#include "Faults/Aftermath.h"
#include "Faults/FaultShims.h"
#include "Faults/NetworkFault.h"
#include "Faults/RecognitionRoad.h"
#include "QVPlatform/Log.h"
#include "Source/Controller/ManagerFixtures.h"
#include "Support/DrivenMainQueue.h"
#include "Support/ResourceFolder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <vector>

/// What the system refuses to a host, and what a host does to its own process, while cards are on their way. What the
/// system refuses to the programs is in ProgramFaultsTest.cpp.
namespace faults {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pointee;

/// No more files for this process, as long as it lives.
class NoDescriptors {
  public:
    NoDescriptors() {
        for (int file = ::dup(STDERR_FILENO); file >= 0; file = ::dup(STDERR_FILENO))
            mFiles.push_back(file);
    }
    ~NoDescriptors() {
        for (const int file : mFiles)
            ::close(file);
    }
    NoDescriptors(const NoDescriptors&) = delete;
    NoDescriptors& operator=(const NoDescriptors&) = delete;

  private:
    std::vector<int> mFiles;
};

/// No more threads for this process.
struct NoThreads {
    NoThreads() { qvFaultsRefuseThreads(true); }
    ~NoThreads() { qvFaultsRefuseThreads(false); }
    NoThreads(const NoThreads&) = delete;
    NoThreads& operator=(const NoThreads&) = delete;
};

template <typename Fault>
std::shared_ptr<void> make() {
    return std::make_shared<Fault>();
}

struct HostFault {
    const char* name;
    /// Begins the fault; it ends with what is returned.
    std::function<std::shared_ptr<void>()> begin;
    /// The errors' codes.
    std::vector<long> codes;
    bool hasNote;
};

void PrintTo(const HostFault& fault, std::ostream* stream) {
    *stream << fault.name;
}

const HostFault kFaults[] = {
    // name, the fault, errors, whether there is a note
    {"NoDescriptorsLeft", make<NoDescriptors>, {2}, false},
    {"TemplatesMissing", make<testsupport::ResourceFolder>, {}, false},
};

class AHostFault : public testing::TestWithParam<HostFault> {};

TEST_P(AHostFault, EndsThreeCardsAndTheFourthIsRead) {
    const Aftermath before(RecognitionRoad::warmUp);
    std::shared_ptr<void> fault;
    const auto responses = RecognitionRoad::sendWhile([&] { fault = GetParam().begin(); }, [&] { fault.reset(); });
    for (const auto& response : responses) {
        ASSERT_TRUE(response);
        EXPECT_THAT(scans::codesOf(response->errors()), testing::ElementsAreArray(GetParam().codes));
        EXPECT_EQ(response->qvmlContent().has_value(), GetParam().hasNote);
    }
    constexpr std::size_t kMegabytes = 32;
    before.expectAsBefore(kMegabytes);
}

INSTANTIATE_TEST_SUITE_P(Faults, AHostFault, testing::ValuesIn(kFaults),
                         [](const auto& row) { return std::string(row.param.name); });

/// A manager, and cards that wait at a server until they are let go.
class WithCardsOnTheirWay : public managers::Manager {
  protected:
    testsupport::DrivenMainQueue mMain;
};

TEST_F(WithCardsOnTheirWay, ThreadsThatTheSystemRefusesDelayThem) {
    managers::OutcomePtr delayed;
    {
        const NoThreads refused;
        delayed = add("one");
        EXPECT_FALSE(delayed->released.isOpen());
    }
    EXPECT_TRUE(mLog.contains("<ERROR> The system has no thread for the operation queue; its work is delayed."));
    mServer.letAllGo();
    expectCompleted(add("two"));
    expectCompleted(delayed);
    EXPECT_EQ(delayed->response->contactName(), "Jordan Example");
}

TEST_F(WithCardsOnTheirWay, ThreadsThatNeverComeLeaveTheWorkToTheMainThread) {
    const NoThreads refused;
    // The tests' own server would want threads, too.
    mManager->setServerURL("http://127.0.0.1:1/");
    const auto first = add("one");
    const auto second = add("two");
    for (int tries = 0; tries < 19; ++tries)
        mMain.pass(std::chrono::milliseconds(100));
    EXPECT_FALSE(first->released.isOpen());
    mMain.pass(std::chrono::milliseconds(100));
    expectCompleted(first);
    EXPECT_FALSE(second->released.isOpen()) << "one at a time, so that the main thread comes to its own work";
    mMain.pass(std::chrono::milliseconds(100));
    expectCompleted(second);
    EXPECT_THAT(scans::codesOf(second->response->errors()), ElementsAre(2));
}

TEST_F(WithCardsOnTheirWay, AThreadThatTheSystemHasLaterTakesTheWork) {
    managers::OutcomePtr delayed;
    {
        const NoThreads refused;
        delayed = add("one");
        mMain.pass(std::chrono::milliseconds(100));
    }
    mServer.letAllGo();
    mMain.pass(std::chrono::milliseconds(100));
    expectCompleted(delayed);
}

/// A signal that ends a process unless somebody asked for another end. Nobody here does.
class APipeThatBreaks : public testing::TestWithParam<bool> {
  protected:
    APipeThatBreaks() : mBefore(std::signal(SIGPIPE, SIG_DFL)) {}
    ~APipeThatBreaks() override { std::signal(SIGPIPE, mBefore); }

    /// More than fits between two programs.
    static std::shared_ptr<qv::Image> noise() {
        testsupport::Pixels pixels(2000, 2000);
        std::mt19937 random(7);
        for (std::uint8_t& value : pixels.rgba)
            value = static_cast<std::uint8_t>(random());
        return qv::Image::initWithData(testsupport::makeJPEG(pixels));
    }

  private:
    void (*mBefore)(int);
};

TEST_P(APipeThatBreaks, EndsTheCardAndNotTheHost) {
    const bool isSecure = GetParam();
    const testsupport::UntrustedTLSServer secure;
    const RawServer plain([](testsupport::ScriptedConnection& connection) { connection.reset(); });
    const std::string certificate = secure.certificate();
    qvFaultsTrust(reinterpret_cast<const unsigned char*>(certificate.data()), certificate.size());
    const auto request = scans::request();
    request->setCardImages(scans::pictures({noise()}));
    const auto operation = scans::operationFor(request, isSecure ? secure.url() : "http://" + plain.place() + "/");
    const testsupport::CapturedLog log;
    operation->main();
    qvFaultsTrust(nullptr, 0);
    ASSERT_TRUE(operation->response());
    EXPECT_THAT(scans::codesOf(operation->response()->errors()), ElementsAre(2));
    if (isSecure) {
        EXPECT_NE(secure.received(), "") << "it came as far as that";
    }
}

INSTANTIATE_TEST_SUITE_P(Faults, APipeThatBreaks, testing::Bool(),
                         [](const auto& row) { return row.param ? "OverTLS" : "Plain"; });

// A host that forks.

bool isRead(const std::shared_ptr<QVBizCardManager>& manager, const std::string& url) {
    manager->setServerURL(url);
    const auto outcome = std::make_shared<managers::Outcome>();
    manager->addRequest(scans::request("card of the child", "token"), managers::completionInto(outcome));
    return outcome->released.waitFor() && outcome->response &&
           outcome->response->contactName() == QVString("Jordan Example");
}

struct Child {
    const char* name;
    /// Says whether all was well; the child's end is its business.
    std::function<bool(const std::string& url)> work;
};

void PrintTo(const Child& child, std::ostream* stream) {
    *stream << child.name;
}

const Child kChildren[] = {
    {"GoesAtOnce",
     [](const std::string&) {
         ::_exit(0);
         return false;
     }},
    {"EndsInGoodOrder", [](const std::string&) { return true; }},
    {"HasAManagerOfItsOwn",
     [](const std::string& url) {
         const auto manager = std::make_shared<QVBizCardManager>();
         manager->setupOperationQueue();
         return isRead(manager, url);
     }},
    {"GoesOnWithTheManager", [](const std::string& url) { return isRead(QVBizCardManager::sharedManager(), url); }},
};

class AForkedChild : public testing::TestWithParam<Child> {
  protected:
    static int statusOf(pid_t child) {
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
    }
};

TEST_P(AForkedChild, DoesNotDisturbTheCardsOfItsParent) {
    testsupport::ScriptedServer good;
    good.respond(scans::answer({scans::kName, scans::kTitle, scans::kEmail}));
    managers::HoldingServer server;
    const auto manager = QVBizCardManager::sharedManager();
    manager->setServerURL(server.url());
    std::vector<managers::OutcomePtr> outcomes;
    for (std::size_t place = 0; place < RecognitionRoad::kPlaces; ++place) {
        outcomes.push_back(std::make_shared<managers::Outcome>());
        manager->addRequest(scans::request("card " + std::to_string(place), "token"),
                            managers::completionInto(outcomes.back()));
    }
    ASSERT_TRUE(server.waitForRequests(RecognitionRoad::kPlaces));
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        ::alarm(30);
        std::exit(GetParam().work(good.url()) ? 0 : 1);
    }
    EXPECT_EQ(statusOf(child), 0);
    server.letAllGo();
    for (const auto& outcome : outcomes) {
        ASSERT_TRUE(outcome->released.waitFor());
        EXPECT_EQ(outcome->calls, 1);
        EXPECT_EQ(outcome->response->contactName(), "Jordan Example");
    }
    EXPECT_TRUE(isRead(manager, good.url())) << "the parent goes on";
}

INSTANTIATE_TEST_SUITE_P(Faults, AForkedChild, testing::ValuesIn(kChildren),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace faults
