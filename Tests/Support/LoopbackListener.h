#pragma once

namespace testsupport {

/// A socket that listens on a loopback port of the system's choice, until it goes.
class LoopbackListener {
  public:
    /// `line`: how many connections may wait to be accepted. Throws `std::runtime_error` when the system refuses.
    explicit LoopbackListener(int line);
    ~LoopbackListener();
    LoopbackListener(const LoopbackListener&) = delete;
    LoopbackListener& operator=(const LoopbackListener&) = delete;

    int port() const { return mPort; }

    /// Waits for the next connection; its socket is the caller's to close. -1 once it was told to stop.
    int accept() const;

    /// Accepts nobody any more. Any thread may call.
    void stop();

  private:
    int mSocket;
    int mPort = 0;
};

}  // namespace testsupport
