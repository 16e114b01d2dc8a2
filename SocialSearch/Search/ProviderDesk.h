#pragma once

#include "QVPlatform/OperationQueue.h"
#include "QVSocialSearch/QVSocialSearchProvider.h"

#include <functional>
#include <memory>

/// Where one provider is asked: on threads of its own, so that it holds up nobody else.
class ProviderDesk {
  public:
    using Report = std::function<void(std::shared_ptr<QVSocialProfile> profile)>;

    explicit ProviderDesk(std::shared_ptr<QVSocialSearchProvider> provider);

    const std::shared_ptr<QVSocialSearchProvider>& provider() const { return mProvider; }

    /// Asks, and reports once what was found: a clean copy, or null. On a thread of the desk, or inside this call when
    /// the provider is not even asked.
    void lookUp(std::shared_ptr<const QVSocialSearchRequest> request,
                QVSocialSearchProvider::Clock::time_point deadline, Report report);

  private:
    const std::shared_ptr<QVSocialSearchProvider> mProvider;
    qv::OperationQueue mQueue;
};
