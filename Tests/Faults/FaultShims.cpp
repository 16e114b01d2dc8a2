// The system's headers would define some of them themselves, to look at what a caller hands over.
#undef _FORTIFY_SOURCE

#include "Faults/FaultShims.h"

#include <dlfcn.h>
#include <netdb.h>
#include <openssl/x509.h>
#include <poll.h>
#include <pthread.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <mutex>
#include <string>
#include <string_view>

// The names below are the system's own; everything that is loaded behind this finds these first.
#define QV_SHIM extern "C" QV_FAULTS_EXPORT

namespace {

constexpr long kNanoseconds = 1'000'000'000;
using Nanoseconds = long;

Nanoseconds systemTime(clockid_t clock) {
    timespec time{};
    ::syscall(SYS_clock_gettime, clock, &time);
    return time.tv_sec * kNanoseconds + time.tv_nsec;
}

timespec timeOf(Nanoseconds count) {
    return {.tv_sec = count / kNanoseconds, .tv_nsec = count % kNanoseconds};
}

long fromEnvironment(const char* name, long otherwise) {
    const char* text = std::getenv(name);
    return text != nullptr ? std::atol(text) : otherwise;
}

/// A clock that ran as the system's until the last change, and as it was told since.
struct SteadyClock {
    std::mutex mutex;
    Nanoseconds systemAtChange = systemTime(CLOCK_MONOTONIC);
    Nanoseconds timeAtChange = systemAtChange;
    long speed = fromEnvironment("QV_FAULT_CLOCK_SPEED", 1);

    Nanoseconds now() {
        const std::lock_guard lock(mutex);
        return timeAt(systemTime(CLOCK_MONOTONIC));
    }
    /// Milliseconds of ours; a wait without end stays one.
    int systemWait(int milliseconds) {
        const std::lock_guard lock(mutex);
        return milliseconds < 0 ? milliseconds : static_cast<int>((milliseconds + speed - 1) / speed);
    }
    void change(long newSpeed, Nanoseconds leap) {
        const std::lock_guard lock(mutex);
        const Nanoseconds system = systemTime(CLOCK_MONOTONIC);
        timeAtChange = timeAt(system) + leap;
        systemAtChange = system;
        if (newSpeed > 0) speed = newSpeed;
    }

  private:
    Nanoseconds timeAt(Nanoseconds system) const { return timeAtChange + (system - systemAtChange) * speed; }
};

SteadyClock& steadyClock() {
    static auto* const clock = new SteadyClock;
    return *clock;
}

std::atomic<long>& wallClockShift() {
    static std::atomic<long> shift{fromEnvironment("QV_FAULT_WALL_CLOCK", 0)};
    return shift;
}

Nanoseconds wallTime() {
    return systemTime(CLOCK_REALTIME) + wallClockShift() * kNanoseconds;
}

template <typename Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

std::atomic<bool> refusesThreads{false};

struct Authority {
    std::mutex mutex;
    std::string certificate;
};

Authority& authority() {
    static auto* const shared = new Authority;
    return *shared;
}

void addAuthority(X509_STORE* store) {
    const std::lock_guard lock(authority().mutex);
    if (authority().certificate.empty()) return;
    const auto* bytes = reinterpret_cast<const unsigned char*>(authority().certificate.data());
    X509* const certificate = d2i_X509(nullptr, &bytes, static_cast<long>(authority().certificate.size()));
    X509_STORE_add_cert(store, certificate);
    X509_free(certificate);
}

}  // namespace

void qvFaultsSetClockSpeed(long factor) {
    steadyClock().change(factor, 0);
}

void qvFaultsAdvanceSteadyClock(long seconds) {
    steadyClock().change(0, seconds * kNanoseconds);
}

void qvFaultsSetWallClock(long seconds) {
    wallClockShift() = seconds;
}

void qvFaultsRefuseThreads(bool refuses) {
    refusesThreads = refuses;
}

void qvFaultsTrust(const unsigned char* certificate, std::size_t size) {
    const std::lock_guard lock(authority().mutex);
    authority().certificate.assign(reinterpret_cast<const char*>(certificate), size);
}

QV_SHIM int clock_gettime(clockid_t clock, timespec* time) noexcept {
    if (clock == CLOCK_MONOTONIC) {
        *time = timeOf(steadyClock().now());
    } else if (clock == CLOCK_REALTIME) {
        *time = timeOf(wallTime());
    } else {
        return static_cast<int>(::syscall(SYS_clock_gettime, clock, time));
    }
    return 0;
}

QV_SHIM int gettimeofday(timeval* time, void*) noexcept {
    const timespec now = timeOf(wallTime());
    *time = {.tv_sec = now.tv_sec, .tv_usec = now.tv_nsec / 1000};
    return 0;
}

QV_SHIM time_t time(time_t* place) noexcept {
    const time_t now = timeOf(wallTime()).tv_sec;
    if (place != nullptr) *place = now;
    return now;
}

/// The moment is meant by our clock, and the system waits by its own: as long in both.
QV_SHIM int pthread_cond_clockwait(pthread_cond_t* condition, pthread_mutex_t* mutex, clockid_t clock,
                                   const timespec* moment) {
    static auto* const wait = next<decltype(pthread_cond_clockwait)>("pthread_cond_clockwait");
    if (clock != CLOCK_MONOTONIC) return wait(condition, mutex, clock, moment);
    const Nanoseconds left = moment->tv_sec * kNanoseconds + moment->tv_nsec - steadyClock().now();
    const timespec end = timeOf(systemTime(clock) + (left > 0 ? left : 0));
    return wait(condition, mutex, clock, &end);
}

QV_SHIM int poll(pollfd* files, nfds_t count, int milliseconds) {
    static auto* const wait = next<decltype(poll)>("poll");
    return wait(files, count, steadyClock().systemWait(milliseconds));
}

QV_SHIM int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*work)(void*), void* argument) {
    static auto* const create = next<decltype(pthread_create)>("pthread_create");
    return refusesThreads ? EAGAIN : create(thread, attributes, work, argument);
}

/// No name that ends in .invalid is asked of anybody outside: there are none.
QV_SHIM int getaddrinfo(const char* name, const char* service, const addrinfo* hints, addrinfo** found) {
    static auto* const resolve = next<decltype(getaddrinfo)>("getaddrinfo");
    const std::string_view text = name != nullptr ? name : "";
    if (text == "silent.invalid") return EAI_AGAIN;
    if (text.ends_with(".invalid")) return EAI_NONAME;
    return resolve(name, service, hints, found);
}

QV_SHIM int X509_STORE_load_file(X509_STORE* store, const char* file) {
    static auto* const load = next<decltype(X509_STORE_load_file)>("X509_STORE_load_file");
    addAuthority(store);
    return load(store, file);
}
