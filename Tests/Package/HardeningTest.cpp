#include "Hardening.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

namespace packagetest {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kProgram = R"(
#include <stdio.h>
#include <string.h>
#ifdef BOTH
__asm__(".section both, \"awx\", @progbits\n.byte 0\n.text");
#endif
int main(int count, char** words) {
    char text[16];
    strcpy(text, words[count - 1]);
    return printf("%s\n", text);
}
)";

/// One file that lacks one thing, so that it is known that its lack is seen.
struct Lack {
    const char* name;
    /// A library or a program.
    const char* kind;
    std::vector<std::string> flags;
    std::vector<std::string> missing;
};

void PrintTo(const Lack& lack, std::ostream* stream) {
    *stream << lack.name;
}

class HardeningCheck : public testing::TestWithParam<Lack> {
  protected:
    fs::path built(const Lack& lack) const {
        fs::path file = mFolder / "built";
        std::vector<std::string> arguments = {"-x",
                                              "c",
                                              mFolder.write("source.c", kProgram),
                                              "-o",
                                              file,
                                              "-O2",
                                              "-fPIC",
                                              lack.kind,
                                              "-fstack-protector-strong",
                                              "-U_FORTIFY_SOURCE",
                                              "-D_FORTIFY_SOURCE=2",
                                              "-Wl,-z,relro,-z,now,-z,noexecstack"};
#ifdef QV_TEST_X86
        if (lack.flags != std::vector<std::string>{"-fcf-protection=none"})
            arguments.insert(arguments.end(), {"-fcf-protection=full", "-Wl,-z,ibt,-z,shstk"});
#endif
        arguments.insert(arguments.end(), lack.flags.begin(), lack.flags.end());
        run(QV_CXX_COMPILER, arguments);
        return file;
    }

    testsupport::TemporaryFolder mFolder;
};

TEST_P(HardeningCheck, SeesWhatIsMissing) {
    EXPECT_THAT(missingHardening(built(GetParam())), ElementsAreArray(GetParam().missing));
}

INSTANTIATE_TEST_SUITE_P(Files, HardeningCheck,
                         testing::Values(Lack{"Nothing", "-shared", {}, {}}, Lack{"NothingInAProgram", "-pie", {}, {}},
                                         Lack{"AnyAddress", "-no-pie", {}, {kAnyAddress}},
                                         Lack{"Relocations", "-shared", {"-Wl,-z,norelro"}, {kRelocations}},
                                         Lack{"BoundAtOnce", "-shared", {"-Wl,-z,lazy"}, {kBoundAtOnce}},
                                         Lack{"StackOfData", "-shared", {"-Wl,-z,execstack"}, {kStackOfData}},
                                         Lack{"WritableCode", "-shared", {"-DBOTH"}, {kStackOfData}},
                                         Lack{"StackProtector", "-shared", {"-fno-stack-protector"}, {kStackProtector}},
                                         Lack{"CheckedCalls", "-shared", {"-U_FORTIFY_SOURCE"}, {kCheckedCalls}},
                                         Lack{"RunPath", "-shared", {"-Wl,-rpath,/somewhere"}, {kNoRunPath}}),
                         [](const auto& row) { return std::string(row.param.name); });
#ifdef QV_TEST_X86
INSTANTIATE_TEST_SUITE_P(FilesForX86, HardeningCheck,
                         testing::Values(Lack{"ControlFlow", "-shared", {"-fcf-protection=none"}, {kControlFlow}}),
                         [](const auto& row) { return std::string(row.param.name); });
#endif

/// Sanitizers and builds for looking into have other flags.
class Hardening : public testing::Test {
  protected:
    void SetUp() override {
#if !QV_MAKES_PACKAGES
        GTEST_SKIP() << "Only what is built to be released is hardened";
#endif
    }

    static std::vector<fs::path> libraries() {
        std::vector<fs::path> found;
        for (const auto& entry : fs::directory_iterator(QV_BINARY_DIR "/lib"))
            if (!entry.is_symlink() && entry.path().string().find(".so.") != std::string::npos)
                found.push_back(entry.path());
        return found;
    }

    /// What the build did for each unit of the rooms that are installed.
    static std::vector<nlohmann::json> units() {
        std::vector<nlohmann::json> found;
        std::ifstream file(QV_BINARY_DIR "/compile_commands.json");
        for (auto& unit : nlohmann::json::parse(file)) {
            const fs::path room = *fs::relative(unit["file"].get<std::string>(), QV_SOURCE_DIR).begin();
            for (const char* name :
                 {"Platform", "Source", "SocialSearch", "Recognition", "Host", "Interface", "Adapters"})
                if (room == name) found.push_back(unit);
        }
        return found;
    }
};

TEST_F(Hardening, IsInTheLibrariesAndPrograms) {
    std::vector<fs::path> files = libraries();
    EXPECT_GE(files.size(), 4U);
    files.emplace_back(QV_BINARY_DIR "/bin/qvcardscan");
    files.emplace_back(QV_BINARY_DIR "/bin/qvcardrecod");
    // What is built finds its neighbours where they were built; what is installed does not need that.
    for (const auto& file : files)
        EXPECT_THAT(missingHardening(file), ElementsAre(kNoRunPath)) << file;
}

TEST_F(Hardening, IsAskedForInEveryUnit) {
    const auto all = units();
    EXPECT_GT(all.size(), 300U);
    for (const auto& unit : all)
        for (const char* flag : {" -fstack-protector-strong ", " -D_FORTIFY_SOURCE=" QV_FORTIFY_LEVEL " ",
#ifdef QV_TEST_X86
                                 " -fcf-protection=full "
#endif
             })
            EXPECT_THAT(unit["command"].get<std::string>(), HasSubstr(flag)) << unit["file"];
}

/// Programs are not marked as a whole; what they are made of is.
TEST_F(Hardening, MarksEveryUnitForControlFlowProtection) {
    std::vector<std::string> arguments = {"-W", "-n"};
    for (const auto& unit : units()) {
        std::smatch output;
        const std::string command = unit["command"];
        ASSERT_TRUE(std::regex_search(command, output, std::regex(" -o ([^ ]+) ")));
        arguments.push_back(QV_BINARY_DIR "/" + output.str(1));
    }
    const std::string notes = run("readelf", arguments).output;
    std::vector<std::string> without;
    for (std::size_t at = notes.find("File: "); at != std::string::npos;) {
        const std::size_t next = notes.find("\nFile: ", at);
        const std::string text = notes.substr(at, next == std::string::npos ? next : next - at);
        if (text.find("x86 feature: IBT, SHSTK") == std::string::npos)
            without.push_back(text.substr(0, text.find('\n')));
        at = next == std::string::npos ? next : next + 1;
    }
    EXPECT_THAT(without, IsEmpty());
}

#if defined(__GLIBC__) && __GLIBC_PREREQ(2, 33) && (__GNUC__ >= 12 || defined(__clang__))
TEST_F(Hardening, KnowsSizesThatShowAtRunTime) {
    EXPECT_EQ(__USE_FORTIFY_LEVEL, 3) << "this is compiled as everything is";
}
#endif

/// Installed by hand, it finds its neighbours from where it lies, and from nowhere else.
class HardeningInstalled : public InstalledPackage {};

TEST_F(HardeningInstalled, LooksForLibrariesBesideItselfOnly) {
    std::vector<fs::path> files = {prefix() + "/bin/qvcardscan", prefix() + "/bin/qvcardrecod"};
    for (const auto& entry : fs::directory_iterator(libraries()))
        if (entry.is_regular_file() && entry.path().string().find(".so.") != std::string::npos)
            files.push_back(entry.path());
    EXPECT_GE(files.size(), 6U);
    for (const auto& file : files)
        EXPECT_THAT(run("readelf", {"-W", "-d", file}).output,
                    HasSubstr("Library runpath: [$ORIGIN:$ORIGIN/../" QV_INSTALL_LIBDIR "]\n"))
            << file;
}

}  // namespace
}  // namespace packagetest
