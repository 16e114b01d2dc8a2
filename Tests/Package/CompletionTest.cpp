#include "Package/ProgramHelp.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace {

using namespace packaging;
using testing::Contains;
using testing::Each;
using testing::IsSupersetOf;
using testing::StartsWith;

/// What one shell offers for the last of these words, which may be empty.
class Shell {
  public:
    virtual ~Shell() = default;
    Shell() = default;
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;

    std::vector<std::string> offers(const std::vector<std::string>& words) const {
        testsupport::ProcessCall call = callFor(words);
        const char* path = std::getenv("PATH");
        call.environment = {{"PATH", QV_BINARY_DIR "/bin:" + std::string(path == nullptr ? "/usr/bin:/bin" : path)},
                            {"HOME", mHome.path().string()},
                            {"LC_ALL", "C.UTF-8"}};
        const auto result = testsupport::runProcess(call);
        EXPECT_EQ(result.error, "");
        std::vector<std::string> found;
        std::istringstream lines(result.output);
        for (std::string line; std::getline(lines, line);)
            found.push_back(line.substr(0, line.find_first_of("\t:")));
        return found;
    }

  protected:
    virtual testsupport::ProcessCall callFor(const std::vector<std::string>& words) const = 0;
    static std::string script(const std::string& program, const std::string& shell) {
        return QV_BINARY_DIR "/completion/" + program + "." + shell;
    }
    static testsupport::ProcessCall call(const std::string& shell, std::vector<std::string> arguments,
                                         const std::vector<std::string>& words) {
        arguments.insert(arguments.end(), words.begin(), words.end());
        testsupport::ProcessCall result;
        result.program = "/usr/bin/" + shell;
        result.arguments = std::move(arguments);
        return result;
    }

  private:
    testsupport::TemporaryFolder mHome;
};

class Bash final : public Shell {
    testsupport::ProcessCall callFor(const std::vector<std::string>& words) const override {
        return call("bash",
                    {"--norc", "-c",
                     "source \"$0\"; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); \"_$1\" \"$1\"; "
                     "[ ${#COMPREPLY[@]} -eq 0 ] || printf '%s\\n' \"${COMPREPLY[@]}\"",
                     script(words[0], "bash")},
                    words);
    }
};

/// With stand-ins for the functions of zsh's completion that need a terminal.
class Zsh final : public Shell {
    testsupport::ProcessCall callFor(const std::vector<std::string>& words) const override {
        return call("zsh",
                    {"-f", "-c",
                     "_describe() { print -rl -- ${(@P)@[-1]} }; _files() { print FILES }; _message() { : };"
                     "words=(\"$@\"); CURRENT=$#; source $0 | { if [[ ${words[-1]} == -* ]] { grep -e "
                     "\"^${words[-1]}\" || true } else { cat } }",
                     script(words[0], "zsh")},
                    words);
    }
};

class Fish final : public Shell {
    testsupport::ProcessCall callFor(const std::vector<std::string>& words) const override {
        return call("fish",
                    {"--no-config", "-c", "source $argv[1]; complete -C \"$argv[2..-1]\"", script(words[0], "fish")},
                    words);
    }
};

template <typename T>
class CompletionTest : public testing::Test {
  protected:
    /// The command's words and one more, which is being written.
    static std::vector<std::string> line(const std::string& program, std::vector<std::string> words,
                                         const std::string& last) {
        words.insert(words.begin(), program);
        words.push_back(last);
        return words;
    }
    T mShell;
};

using Shells = testing::Types<Bash, Zsh, Fish>;
TYPED_TEST_SUITE(CompletionTest, Shells);

TYPED_TEST(CompletionTest, OffersEveryOptionOfEveryCommand) {
    for (const auto& program : kPrograms) {
        for (const auto& help : everyHelpOf(program)) {
            const auto offers = this->mShell.offers(this->line(program, help.command, "--"));
            EXPECT_THAT(offers, IsSupersetOf(help.longOptions())) << program;
            EXPECT_THAT(offers, Each(StartsWith("-"))) << program;
        }
    }
}

TYPED_TEST(CompletionTest, OffersEveryCommand) {
    for (const auto& help : everyHelpOf("qvcardscan")) {
        if (help.commands.empty()) continue;
        EXPECT_THAT(this->mShell.offers(this->line("qvcardscan", help.command, "")), IsSupersetOf(help.commands));
    }
}

TYPED_TEST(CompletionTest, OffersOnlyWhatBeginsTheSame) {
    const auto offers = this->mShell.offers({"qvcardscan", "scan", "--sk"});
    EXPECT_THAT(offers, testing::ElementsAre("--skip-note"));
}

TYPED_TEST(CompletionTest, OffersNoOptionWhereAValueIsWanted) {
    for (const char* option : {"--output", "--token-file", "--language", "--server"}) {
        EXPECT_THAT(this->mShell.offers({"qvcardscan", "scan", option, ""}), testing::Not(Contains(StartsWith("--"))))
            << option;
    }
    EXPECT_THAT(this->mShell.offers({"qvcardrecod", "--workers", ""}), testing::Not(Contains(StartsWith("--"))));
}

}  // namespace
