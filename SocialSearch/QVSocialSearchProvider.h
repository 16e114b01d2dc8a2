#pragma once

#include "QVPlatform/Export.h"
#include "QVSocialSearch/QVSocialProfile.h"
#include "QVSocialSearch/QVSocialSearchRequest.h"

#include <chrono>
#include <memory>
#include <string>

/// One place to look a person up. Hosts add their own to the search manager.
class QV_EXPORT QVSocialSearchProvider {
  public:
    /// What deadlines are told by.
    using Clock = std::chrono::steady_clock;

    virtual ~QVSocialSearchProvider();

    /// For the log.
    virtual std::string name() const = 0;

    /// The person's profile, or null. The request has an e-mail address that is not blank. Called on a thread of the
    /// search, several at once for different requests; may block, and should end by `deadline`: what comes later is
    /// dropped. Nothing found, or an exception, which is logged, costs nothing but this provider's part. The profile is
    /// copied. The search keeps the provider alive; one that the host lets go meanwhile may end on the search's thread.
    virtual std::shared_ptr<QVSocialProfile> profileForRequest(const QVSocialSearchRequest& request,
                                                               Clock::time_point deadline) = 0;
};
