#pragma once

#include <chrono>
#include <cstddef>
#include <functional>

namespace faults {

/// What a fault must leave as it was: taken before it, compared after it.
class Aftermath {
  public:
    /// Does what loads whatever is loaded once, waits until its threads have ended, and takes what is there then: the
    /// main thread and so many of the test's own. The high-water mark of the process's memory is set back, so that what
    /// happens next is measured and nothing else.
    explicit Aftermath(const std::function<void()>& warmUp, std::size_t threadsOfTest = 0);

    /// Fails the running test unless there are as many threads and descriptors as before, memory did not grow by more
    /// than `mostMegabytes` meanwhile, and no more time went by. Threads that have nothing more to do get the time to
    /// end. The sanitizers keep memory that was freed; under them it is not compared.
    void expectAsBefore(std::size_t mostMegabytes, std::chrono::seconds mostTime = std::chrono::seconds(200)) const;

    static std::size_t threads();
    static std::size_t descriptors();

  private:
    std::chrono::nanoseconds mBegin;
    std::size_t mThreads;
    std::size_t mDescriptors;
    std::size_t mKilobytes;
};

}  // namespace faults
