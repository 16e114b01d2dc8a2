#pragma once

#include <sched.h>

#include <string>

namespace benchmarksupport {

/// Keeps the calling thread, and those that it starts, on one processor: one thread at a time is measured there.
void stayOnOneProcessor();

/// Lets the calling thread use all processors while it lives.
class AllProcessors {
  public:
    AllProcessors();
    ~AllProcessors();
    AllProcessors(const AllProcessors&) = delete;
    AllProcessors& operator=(const AllProcessors&) = delete;

  private:
    cpu_set_t mBefore;
};

/// As the system calls it.
std::string nameOfProcessor();

}  // namespace benchmarksupport
