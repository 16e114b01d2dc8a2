#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace fuzzing {

/// A server on a loopback port that answers with given bytes, whatever it is asked, and then ends the connection. It
/// lives as long as the fuzzer.
class AnswerServer {
  public:
    AnswerServer();
    std::uint16_t port() const { return mPort; }
    /// From now on: the first answer, then the next, the last one for good; `inPieces` sends each byte by byte.
    void play(std::vector<std::string> answers, bool inPieces);

  private:
    void serve();
    void answer(int connection);
    std::string nextAnswer(bool& inPieces);

    int mSocket = -1;
    std::uint16_t mPort = 0;
    std::mutex mMutex;
    std::vector<std::string> mAnswers{""};
    std::size_t mNext = 0;
    bool mInPieces = false;
};

/// Sends the pieces to a loopback port, says that nothing follows, and gives back what came until the other side ended
/// too. Ends the fuzzer when that does not happen.
std::string exchange(std::uint16_t port, const std::vector<std::string>& pieces);

}  // namespace fuzzing
