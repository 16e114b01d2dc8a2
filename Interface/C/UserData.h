#pragma once

#include "Guard.h"
#include "qvcardscan.h"

#include <memory>

namespace qvc {

/// What the host gave for its callback, released with the last of the library's uses.
class UserData {
  public:
    UserData(void* data, qv_release_function release) : mData(data), mRelease(release) {}
    ~UserData() {
        if (mRelease == nullptr) return;
        guardedDo([this] { mRelease(mData); });
    }
    UserData(const UserData&) = delete;
    UserData& operator=(const UserData&) = delete;

    void* get() const { return mData; }

  private:
    void* const mData;
    const qv_release_function mRelease;
};

using SharedUserData = std::shared_ptr<const UserData>;

inline SharedUserData share(void* data, qv_release_function release) {
    return std::make_shared<const UserData>(data, release);
}

}  // namespace qvc
