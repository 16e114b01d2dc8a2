#include "Recognition/Client.h"
#include "Recognition/DrawnCard.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <vector>

namespace qv::recognition {
namespace {

/// The program as a child process, with pipes to its standard input and from its standard output.
class Program {
  public:
    explicit Program(std::vector<std::string> arguments) {
        int in[2];
        int out[2];
        if (::pipe(in) != 0 || ::pipe(out) != 0) return;
        mPID = ::fork();
        if (mPID == 0) run(in, out, arguments);
        ::close(in[0]);
        ::close(out[1]);
        mIn = in[1];
        mOut = out[0];
    }
    ~Program() {
        closeInput();
        ::close(mOut);
        if (mPID > 0) {
            ::kill(mPID, SIGKILL);
            ::waitpid(mPID, nullptr, 0);
        }
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void write(const std::string& text) {
        EXPECT_EQ(::write(mIn, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    void closeInput() {
        if (mIn >= 0) ::close(mIn);
        mIn = -1;
    }
    void signal(int number) const { ::kill(mPID, number); }

    std::string readLine() const {
        std::string line;
        for (char c = 0; ::read(mOut, &c, 1) == 1 && c != '\n';)
            line.push_back(c);
        return line;
    }
    std::uint16_t readPort() const {
        const std::string line = readLine();
        EXPECT_EQ(line.rfind("port ", 0), 0U) << line;
        return line.size() > 5 ? static_cast<std::uint16_t>(std::stoi(line.substr(5))) : std::uint16_t{0};
    }
    /// The status it ends with; −1 when it was ended by a signal.
    int awaitEnd() {
        int status = 0;
        ::waitpid(mPID, &status, 0);
        mPID = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

  private:
    [[noreturn]] static void run(const int in[2], const int out[2], const std::vector<std::string>& arguments) {
        ::dup2(in[0], STDIN_FILENO);
        ::dup2(out[1], STDOUT_FILENO);
        for (const int end : {in[0], in[1], out[0], out[1]})
            ::close(end);
        const std::string path = QV_BINARY_DIR "/bin/qvcardrecod";
        std::vector<char*> words{const_cast<char*>(path.c_str())};
        for (const auto& argument : arguments)
            words.push_back(const_cast<char*>(argument.c_str()));
        words.push_back(nullptr);
        ::execv(path.c_str(), words.data());
        ::_exit(127);
    }

    pid_t mPID = -1;
    int mIn = -1;
    int mOut = -1;
};

TEST(ProgramTest, ServesItsParentAndEndsWithIt) {
    Program program({"--embedded", "--quiet"});
    program.write("sesame\n");
    const auto port = program.readPort();
    Client stranger(port);
    stranger.send(post("card"));
    EXPECT_EQ(statusOf(stranger.readAll()), "401");
    const auto jpeg = asJPEG(drawnCard({"Jane Miller", "jane@acmetools.com"}));
    Client client(port);
    client.send(post(std::string(jpeg.begin(), jpeg.end()), "auth: sesame\r\n"));
    EXPECT_NE(client.readAll().find("jane@acmetools.com"), std::string::npos);
    program.closeInput();
    EXPECT_EQ(program.awaitEnd(), 0);
}

TEST(ProgramTest, NeedsATokenFromItsParent) {
    Program program({"--embedded", "--quiet"});
    program.closeInput();
    EXPECT_EQ(program.awaitEnd(), 1);
}

TEST(ProgramTest, EndsWhenAskedTo) {
    for (const int number : {SIGTERM, SIGINT}) {
        Program program({"--quiet"});
        EXPECT_NE(program.readPort(), 0);
        program.signal(number);
        EXPECT_EQ(program.awaitEnd(), 0) << number;
    }
}

TEST(ProgramTest, RefusesAWrongCall) {
    EXPECT_EQ(Program({"--nonsense"}).awaitEnd(), 2);
    EXPECT_EQ(Program({"--port", "no"}).awaitEnd(), 2);
    EXPECT_EQ(Program({"--workers", "0"}).awaitEnd(), 2);
    EXPECT_EQ(Program({"--tessdata", "/nonexistent"}).awaitEnd(), 1);
    EXPECT_EQ(Program({"--token-file", "/nonexistent"}).awaitEnd(), 1);
    EXPECT_EQ(Program({"--listen", "999.1.1.1"}).awaitEnd(), 1);
    EXPECT_EQ(Program({"--help"}).awaitEnd(), 0);
    EXPECT_EQ(Program({"--version"}).awaitEnd(), 0);
}

}  // namespace
}  // namespace qv::recognition
