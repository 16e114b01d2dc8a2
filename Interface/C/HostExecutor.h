#pragma once

#include "Handles.h"
#include "QVPlatform/MainQueue.h"
#include "UserData.h"
#include "qvcardscan.h"

#include <functional>

namespace qvc {

/// Work on its way through the host's loop.
struct WorkObject {
    std::function<void()> work;
};

/// The host's own loop, as the library sees it.
class HostExecutor : public qv::MainExecutor {
  public:
    explicit HostExecutor(const qv_main_executor& executor);

    void dispatchAsync(std::function<void()> work) override;
    void dispatchAfter(std::chrono::nanoseconds delay, std::function<void()> work) override;
    bool isMainThread() const override;

  private:
    const qv_main_executor mExecutor;
    const UserData mUserData;
};

}  // namespace qvc
