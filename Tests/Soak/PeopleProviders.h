#pragma once

#include "QVSocialSearch/QVSocialSearchManager.h"
#include "Support/Gate.h"

#include <memory>
#include <mutex>

namespace soak {

/// The providers of the soak's searches. What they do with an address depends on its number alone: one finds people on
/// a professional network, one finds most people but nobody now and then, one always fails, and one waits when told to.
class PeopleProviders {
  public:
    /// A search manager that asks them.
    std::shared_ptr<QVSocialSearchManager> manager();

    /// From now on one of them does not answer before the gate is open.
    void waitFor(std::shared_ptr<testsupport::Gate> gate);

  private:
    struct Late {
        std::mutex mutex;
        std::shared_ptr<testsupport::Gate> gate;
    };
    const std::shared_ptr<Late> mLate = std::make_shared<Late>();
};

}  // namespace soak
