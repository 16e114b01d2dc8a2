#include "HostExecutor.h"

#include "Arguments.h"
#include "Structures.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace qvc {

using std::chrono::nanoseconds;

HostExecutor::HostExecutor(const qv_main_executor& executor)
    : mExecutor(executor), mUserData(executor.user_data, executor.release) {
}

void HostExecutor::dispatchAsync(std::function<void()> work) {
    dispatchAfter(nanoseconds::zero(), std::move(work));
}

void HostExecutor::dispatchAfter(nanoseconds delay, std::function<void()> work) {
    if (!work) return;
    auto* const handle = makeHandle<qv_work>(std::make_shared<WorkObject>(WorkObject{std::move(work)}));
    const auto count = static_cast<std::uint64_t>(std::max(delay, nanoseconds::zero()).count());
    mExecutor.dispatch(mUserData.get(), count, handle);
}

bool HostExecutor::isMainThread() const {
    return mExecutor.is_main_thread(mUserData.get()) != 0;
}

namespace {

std::shared_ptr<qv::PumpedExecutor> pumpedExecutor() {
    return std::dynamic_pointer_cast<qv::PumpedExecutor>(qv::MainQueue::executor());
}

/// What does not fit is for ever, and what is no number is nothing.
nanoseconds nanosecondsFrom(double seconds) {
    const double count = seconds * 1e9;
    if (std::isnan(count) || count <= 0) return nanoseconds::zero();
    return count >= std::ldexp(1.0, 63) ? nanoseconds::max() : nanoseconds(static_cast<nanoseconds::rep>(count));
}

Outcome setExecutor(const qv_main_executor* executor) {
    if (executor == nullptr) {
        qv::MainQueue::setExecutor(nullptr);
        return {};
    }
    qv_main_executor known;
    if (!readStructure<sizeof(qv_main_executor)>(known, executor)) {
        return Outcome::invalid("The structure's size is too small.");
    }
    if (known.dispatch == nullptr || known.is_main_thread == nullptr) {
        const UserData released(known.user_data, known.release);
        return Outcome::invalid("The functions dispatch and is_main_thread are required.");
    }
    qv::MainQueue::setExecutor(std::make_shared<HostExecutor>(known));
    return {};
}

}  // namespace
}  // namespace qvc

using namespace qvc;

size_t qv_pump(void) {
    return guarded<size_t>(0, [] {
        const auto executor = pumpedExecutor();
        return executor ? executor->pump() : 0;
    });
}

int32_t qv_pump_until(int32_t (*done)(void* user_data), void* user_data, double seconds) {
    return guarded<int32_t>(0, [&] {
        const auto executor = pumpedExecutor();
        int32_t answer = 0;
        if (!executor || done == nullptr) return answer;
        const auto ask = [&] { return (answer = done(user_data)) != 0; };
        executor->pumpUntil(ask, nanosecondsFrom(seconds));
        return answer;
    });
}

qv_status qv_set_main_executor(const qv_main_executor* executor, qv_error** error) {
    return reported(error, [&] { return setExecutor(executor); });
}

void qv_work_run(qv_work* work) {
    guardedDo([&] {
        if (const auto object = takeObject(work)) object->work();
    });
}

void qv_work_release(qv_work* work) {
    guardedDo([&] { takeObject(work); });
}
