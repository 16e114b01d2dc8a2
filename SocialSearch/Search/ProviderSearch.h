#pragma once

#include "QVPlatform/MainQueue.h"
#include "QVSocialSearch/QVSocialSearchManager.h"
#include "Search/ProviderDesk.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <vector>

/// One search: gathers what the providers report and answers once, on the main executor. The lock is for a host's
/// executor that runs work on several threads.
class ProviderSearch : public std::enable_shared_from_this<ProviderSearch> {
  public:
    using Desks = std::vector<std::shared_ptr<ProviderDesk>>;
    using Completion = QVSocialSearchManager::Completion;

    /// `desks` in their order of trust, at least one.
    static void start(std::shared_ptr<const QVSocialSearchRequest> request, const Desks& desks,
                      std::chrono::seconds time, Completion completion);

  private:
    ProviderSearch(std::shared_ptr<const QVSocialSearchRequest> request,
                   const std::shared_ptr<qv::MainExecutor>& executor, std::size_t count, Completion completion);

    ProviderDesk::Report reportOf(std::size_t place);
    void take(std::size_t place, std::shared_ptr<QVSocialProfile> profile);
    void answer();
    Completion takeCompletion();

    const std::shared_ptr<const QVSocialSearchRequest> mRequest;
    /// Not owned: it holds the search until the time is over.
    const std::weak_ptr<qv::MainExecutor> mExecutor;
    std::mutex mMutex;
    /// By the provider's place in the order of trust.
    std::vector<std::shared_ptr<QVSocialProfile>> mFound;
    std::size_t mUnanswered;
    /// Empty once it was called.
    Completion mCompletion;
};
