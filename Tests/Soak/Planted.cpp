#include "Soak/Planted.h"

#include <fcntl.h>
#include <unistd.h>

#include <deque>
#include <map>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>

namespace soak {

namespace {

constexpr std::size_t kLeakedBytes = 1024;
constexpr int kCardsBetween = 10;

/// Asleep until the process ends.
void wait() {
    while (true)
        (void)::pause();
}

/// Held for ever; never given back, so that a leak checker may overlook it.
void leak() {
    static std::mutex mutex;
    static auto* const kept = new std::deque<std::string>;
    const std::lock_guard lock(mutex);
    kept->emplace_back(kLeakedBytes, 'x');
}

}  // namespace

Planted plantedNamed(std::string_view name) {
    static const std::map<std::string_view, Planted> names{{"leak", Planted::Leak},
                                                           {"lost", Planted::Lost},
                                                           {"twice", Planted::Twice},
                                                           {"descriptor", Planted::Descriptor},
                                                           {"thread", Planted::Thread}};
    const auto found = names.find(name);
    if (found == names.end()) throw std::runtime_error("nothing to plant is called " + std::string(name));
    return found->second;
}

void plant(Planted planted, int number) {
    if (planted == Planted::Leak) leak();
    if (number % kCardsBetween != 0) return;
    if (planted == Planted::Descriptor) (void)::open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (planted == Planted::Thread) std::thread(wait).detach();
}

}  // namespace soak
