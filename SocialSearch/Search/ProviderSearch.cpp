#include "Search/ProviderSearch.h"

#include "QVPlatform/Log.h"
#include "Search/ProfileMerging.h"

#include <utility>

ProviderSearch::ProviderSearch(std::shared_ptr<const QVSocialSearchRequest> request,
                               const std::shared_ptr<qv::MainExecutor>& executor, std::size_t count,
                               Completion completion)
    : mRequest(std::move(request)),
      mExecutor(executor),
      mFound(count),
      mUnanswered(count),
      mCompletion(std::move(completion)) {
}

void ProviderSearch::start(std::shared_ptr<const QVSocialSearchRequest> request, const Desks& desks,
                           std::chrono::seconds time, Completion completion) {
    const auto deadline = QVSocialSearchProvider::Clock::now() + time;
    const auto executor = qv::MainQueue::executor();
    const std::shared_ptr<ProviderSearch> search(
        new ProviderSearch(std::move(request), executor, desks.size(), std::move(completion)));
    executor->dispatchAfter(time, [search] { search->answer(); });
    for (std::size_t place = 0; place < desks.size(); ++place)
        desks[place]->lookUp(search->mRequest, deadline, search->reportOf(place));
}

ProviderDesk::Report ProviderSearch::reportOf(std::size_t place) {
    return [search = shared_from_this(), place](std::shared_ptr<QVSocialProfile> profile) {
        const auto executor = search->mExecutor.lock();
        if (!executor) return;
        executor->dispatchAsync([search, place, profile = std::move(profile)] { search->take(place, profile); });
    };
}

void ProviderSearch::take(std::size_t place, std::shared_ptr<QVSocialProfile> profile) {
    {
        const std::lock_guard lock(mMutex);
        if (!mCompletion) return;
        mFound[place] = std::move(profile);
        if (--mUnanswered > 0) return;
    }
    answer();
}

/// Empty when it was taken before. Nothing that was found changes any more then.
ProviderSearch::Completion ProviderSearch::takeCompletion() {
    const std::lock_guard lock(mMutex);
    return std::exchange(mCompletion, {});
}

void ProviderSearch::answer() {
    const Completion completion = takeCompletion();
    if (!completion) return;
    if (mUnanswered > 0) qv::Log::write("<WARNING> %d social search providers did not answer in time", mUnanswered);
    completion(QVSocialSearchResponse::initWithRequestID(mRequest->requestID(), mergedProfile(mFound)));
}
