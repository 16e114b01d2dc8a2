#include "Faults/NetworkFault.h"
#include "Host/Batch/BatchFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

/// What the program `qvcardscan` does when something around it fails: it says so, ends with its status, and the same
/// call does what is left when the fault is gone.
namespace faults {
namespace {

namespace fs = std::filesystem;
using testing::AnyOf;
using testing::HasSubstr;
using testsupport::ProcessCall;
using testsupport::ProcessResult;
using testsupport::runProcess;

/// A pile of two cards.
class Pile : public testsupport::BatchFixture {
  protected:
    Pile() {
        addPictures(2);
        recogniseEverybody();
    }

    static std::string shims() { return std::string(QV_BINARY_DIR) + "/lib/libFaultShims.so"; }
    static ProcessCall withShims(ProcessCall call, const std::string& speed) {
        call.environment["LD_PRELOAD"] = shims();
        call.environment["QV_FAULT_CLOCK_SPEED"] = speed;
        // A program that was built with the sanitizer wants to be loaded behind it.
        call.environment["ASAN_OPTIONS"] = "verify_asan_link_order=0";
        return call;
    }
    /// The call behind a few words of the shell, in which "$@" stands for it.
    static ProcessCall inShell(const std::string& words, ProcessCall call) {
        std::vector<std::string> arguments{"-c", words, "bash", call.program.string()};
        arguments.insert(arguments.end(), call.arguments.begin(), call.arguments.end());
        call.program = "/bin/bash";
        call.arguments = std::move(arguments);
        return call;
    }
    static void expectEnded(const ProcessResult& result) {
        EXPECT_FALSE(result.timedOut);
        EXPECT_GE(result.status, 0) << "ended by signal " << -result.status;
        EXPECT_LT(result.status, 128) << result.error;
        for (const char* crash : {"terminate called", "AddressSanitizer", "core dumped", "std::"})
            EXPECT_THAT(result.error, testing::Not(HasSubstr(crash)));
    }
    void expectRest() {
        const ProcessResult rest = batch({"--resume"});
        EXPECT_EQ(rest.status, 0) << rest.error << rest.output;
        EXPECT_EQ(cards().size(), 2U);
    }
};

// The rows of NetworkFaults.cpp that are marked for the programs.

class ANetworkFault : public Pile, public testing::WithParamInterface<NetworkFault> {};

TEST_P(ANetworkFault, IsToldAndTheRestIsReadLater) {
    const NetworkFault& fault = GetParam();
    const FaultyServer faulty = fault.begin();
    ProcessCall bad = withShims(call(), std::to_string(fault.speed));
    bad.arguments[5] = faulty.url;
    const ProcessResult result = runProcess(bad);
    expectEnded(result);
    EXPECT_EQ(result.status, 1) << result.error;
    EXPECT_THAT(result.output, HasSubstr("2 failed"));
    const char* text = fault.end == End::Unreadable ? "could not be read" : fault.text;
    EXPECT_THAT(result.output, HasSubstr(text)) << result.error;
    EXPECT_THAT(result.output + result.error, testing::Not(HasSubstr("s3cret-t0ken")));
    faulty.expectAfterwards();
    expectRest();
}

INSTANTIATE_TEST_SUITE_P(Faults, ANetworkFault, testing::ValuesIn(networkFaultsOf(Program)),
                         [](const auto& row) { return std::string(row.param.name); });

// What the system refuses.

enum Needs : unsigned { Nothing = 0, Namespaces = 1 };

struct SystemFault {
    const char* name;
    /// Words of the shell around the call; $OUT, $IN and $BOOK are its folders.
    std::string words;
    std::vector<std::string> more;
    int status;
    /// In what it says.
    const char* text;
    Needs needs;
};

void PrintTo(const SystemFault& fault, std::ostream* stream) {
    *stream << fault.name;
}

/// With a small disk of its own that nobody else sees, mounted like this.
std::string withDisk(const std::string& mount) {
    return "exec unshare $UNSHARE -m bash -c 'set -e; mkdir -p \"$OUT\" \"$BOOK\"; mount -t tmpfs " + mount +
           "; \"$@\"' bash \"$@\"";
}

/// While nobody may do what these rights lack; without its privileges an administrator may not either.
std::string withRights(const std::string& rights, const std::string& place) {
    return "if [ $(id -u) = 0 ]; then set -- setpriv --bounding-set=-dac_override,-dac_read_search "
           "--inh-caps=-dac_override,-dac_read_search \"$@\"; fi; [ -e \"" +
           place + "\" ] || mkdir \"" + place + "\"; chmod " + rights + " \"" + place +
           "\"; \"$@\"; status=$?; chmod 755 \"" + place + "\"; exit $status";
}

/// A pipe whose only reader has gone.
const std::string kIntoABrokenPipe =
    "mkfifo \"$OUT.pipe\"; exec 3<> \"$OUT.pipe\" 4> \"$OUT.pipe\" 3<&-; exec \"$@\" >&4 4>&-";

const std::vector<std::string> kSave = {"--save", "--address-book", "BOOK"};

const SystemFault kFaults[] = {
    // name, around the call, more arguments, status, text, what it needs
    {"DiskFull", withDisk("-o size=12k tmpfs \"$OUT\""), {}, 3, "No space left on device", Namespaces},
    {"DiskFullOfFiles", withDisk("-o nr_inodes=4 tmpfs \"$OUT\""), {}, 3, "No space left on device", Namespaces},
    {"FolderReadOnly", withDisk("-o ro tmpfs \"$OUT\""), {}, 3, "Read-only file system", Namespaces},
    {"DiskOfTheAddressBookFull", withDisk("-o nr_inodes=1 tmpfs \"$BOOK\""), kSave, 3, "No space left on", Namespaces},
    {"AddressBookReadOnly", withDisk("-o ro tmpfs \"$BOOK\""), kSave, 3, "Read-only file system", Namespaces},
    {"NoPermissionToWrite", withRights("555", "$OUT"), {}, 3, "Permission denied", Nothing},
    {"NoPermissionToSave", withRights("555", "$BOOK"), kSave, 3, "Permission denied", Nothing},
    {"NoPermissionToRead", withRights("0", "$IN/card1.jpg"), {}, 1, "Permission denied", Nothing},
    {"FilesLimited", "ulimit -f 1; exec \"$@\"", {}, 3, "File too large", Nothing},
    {"NobodyReadsTheOutput", kIntoABrokenPipe, {}, 3, "", Nothing},
    {"OutputFull", "exec \"$@\" > /dev/full", {}, 3, "No space left on device", Nothing},
    {"OutputClosed", "exec \"$@\" >&-", {}, 3, "", Nothing},
};

/// What makes this process able to mount, or nothing at all: "-r" for whoever is not the administrator.
std::optional<std::string> waysToUnshare() {
    for (const std::string options : {"", "-Ur"}) {
        ProcessCall attempt;
        attempt.program = "/bin/bash";
        attempt.arguments = {"-c", "exec unshare " + options + " -m bash -c 'mount -t tmpfs tmpfs /mnt'"};
        if (runProcess(attempt).status == 0) return options;
    }
    return std::nullopt;
}

class ASystemFault : public Pile, public testing::WithParamInterface<SystemFault> {
  protected:
    ProcessCall faultyCall() const {
        std::vector<std::string> more = GetParam().more;
        for (std::string& argument : more) {
            if (argument == "BOOK") argument = book();
        }
        ProcessCall bad = inShell(GetParam().words, call(more));
        bad.environment["IN"] = in();
        bad.environment["OUT"] = out();
        bad.environment["BOOK"] = book();
        return bad;
    }
};

TEST_P(ASystemFault, IsToldAndTheRestIsReadLater) {
    ProcessCall bad = faultyCall();
    if (GetParam().needs == Namespaces) {
        const auto options = waysToUnshare();
        if (!options) GTEST_SKIP() << "this system lets nobody here mount a small disk of his own";
        bad.environment["UNSHARE"] = *options;
    }
    const ProcessResult result = runProcess(bad);
    expectEnded(result);
    EXPECT_EQ(result.status, GetParam().status) << result.error << result.output;
    EXPECT_THAT(result.output + result.error, HasSubstr(GetParam().text));
    expectRest();
}

INSTANTIATE_TEST_SUITE_P(Faults, ASystemFault, testing::ValuesIn(kFaults),
                         [](const auto& row) { return std::string(row.param.name); });

// What there is less and less of.

/// Calls with ever larger limits, until one is enough.
class TooLittle : public Pile {
  protected:
    /// `words` around the call, in which $LIMIT is the limit. Returns the statuses, in that order.
    std::vector<int> statusesWith(const char* words, const std::vector<long>& limits) {
        std::vector<int> statuses;
        for (const long limit : limits) {
            fs::remove_all(out());
            ProcessCall limited = inShell(words, call());
            limited.environment["LIMIT"] = std::to_string(limit);
            const ProcessResult result = runProcess(limited);
            SCOPED_TRACE(std::to_string(limit) + ": status " + std::to_string(result.status) + "\n" + result.error);
            if (!fallsShortOfProgram(result)) expectEnded(result);
            statuses.push_back(result.status);
        }
        return statuses;
    }
    /// The system's loader says so itself when it has not even room for the program, and the language's runtime when
    /// it has not even room for an exception. The C library ends every process in which it cannot note what a thread
    /// has to clean up; the library that scales pictures has such.
    static bool fallsShortOfProgram(const ProcessResult& result) {
        return result.status == 127 || result.error == "terminate called without an active exception\n" ||
               result.error == "Fatal glibc error: failed to register TLS destructor: out of memory\n";
    }
    static long countOf(const std::vector<int>& statuses, int status) {
        return std::count(statuses.begin(), statuses.end(), status);
    }
    static void expectSomeFailedAndTheLastDidNot(const std::vector<int>& statuses) {
        EXPECT_EQ(statuses.back(), 0);
        EXPECT_GT(static_cast<long>(statuses.size()) - countOf(statuses, 0) - countOf(statuses, 127), 0)
            << "none of the limits met the program itself: " << testing::PrintToString(statuses);
    }
};

TEST_F(TooLittle, DescriptorsEndTheProgramInGoodOrder) {
    expectSomeFailedAndTheLastDidNot(
        statusesWith("ulimit -n $LIMIT; exec \"$@\"", {4, 5, 6, 7, 8, 9, 10, 11, 12, 14, 16, 20, 64}));
    expectRest();
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
// The sanitizers reserve more than any such limit.
TEST_F(TooLittle, MemoryEndsTheProgramInGoodOrder) {
    testsupport::Pixels pixels(3000, 2000);
    for (std::size_t at = 0; at < pixels.rgba.size(); ++at)
        pixels.rgba[at] = static_cast<std::uint8_t>(at * at >> 7);
    const qv::Data large = testsupport::makePNG(pixels);
    mFolder.write("in/card1.jpg", std::string(large.begin(), large.end()));
    std::vector<long> kibibytes;
    // Closer together where the program begins to work: any of its parts may be the one that finds nothing.
    for (long limit = 60'000; limit < 1'000'000; limit += limit / (limit < 120'000 ? 40 : 8))
        kibibytes.push_back(limit);
    kibibytes.push_back(4'000'000);
    expectSomeFailedAndTheLastDidNot(statusesWith("ulimit -v $LIMIT; exec \"$@\"", kibibytes));
    expectRest();
}
#endif

// What the system is like, without anything failing: the same card gives the same bytes.

struct Surroundings {
    const char* name;
    std::map<std::string, std::optional<std::string>> environment;
};

void PrintTo(const Surroundings& surroundings, std::ostream* stream) {
    *stream << surroundings.name;
}

const Surroundings kSurroundings[] = {
    {"NoLocale", {{"LC_ALL", std::nullopt}, {"LANG", std::nullopt}, {"LC_CTYPE", std::nullopt}}},
    {"German", {{"LC_ALL", "de_DE.UTF-8"}}},
    {"GermanLatinOne", {{"LC_ALL", "de_DE.ISO-8859-1"}}},
    {"Turkish", {{"LC_ALL", "tr_TR.UTF-8"}}},
    {"TurkishLatinFive", {{"LC_ALL", "tr_TR.ISO-8859-9"}}},
    {"LocaleThatIsNotThere", {{"LC_ALL", "xx_XX.UTF-8"}}},
    {"ClockInThePast", {{"QV_FAULT_WALL_CLOCK", "-1000000000"}}},
    {"ClockInTheFuture", {{"QV_FAULT_WALL_CLOCK", "3000000000"}}},
    {"NoHomeAndNoTemporaryFolder", {{"HOME", std::nullopt}, {"TMPDIR", "/nowhere"}}},
};

class TheSurroundings : public Pile, public testing::WithParamInterface<Surroundings> {};

TEST_P(TheSurroundings, ChangeNothingOfACard) {
    const auto scan = [&](const std::string& to) {
        ProcessCall one = testsupport::hostCall(
            {"scan", in() + "/card1.jpg", "-o", (mFolder / to).string(), "--server", mServer.url("/")});
        one.environment["QVCARDSCAN_TOKEN"] = "s3cret-t0ken-for-tests";
        return withShims(one, "1");
    };
    ProcessCall usual = scan("usual");
    usual.environment["LC_ALL"] = "C.UTF-8";
    ASSERT_EQ(runProcess(usual).status, 0);
    ProcessCall other = scan("other");
    for (const auto& [name, value] : GetParam().environment)
        other.environment[name] = value;
    const ProcessResult result = runProcess(other);
    expectEnded(result);
    ASSERT_EQ(result.status, 0) << result.error;
    for (const char* file : {"note.qvml", "note.html", "card.json", "contact.json", "result-front.xml"})
        EXPECT_EQ(testsupport::readFile(mFolder / "other" / file), testsupport::readFile(mFolder / "usual" / file))
            << file;
}

INSTANTIATE_TEST_SUITE_P(Faults, TheSurroundings, testing::ValuesIn(kSurroundings),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace faults
