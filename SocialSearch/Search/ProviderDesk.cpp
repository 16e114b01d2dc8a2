#include "Search/ProviderDesk.h"

#include "QVPlatform/Log.h"
#include "Search/ProfileCleaning.h"

#include <exception>
#include <string>
#include <utility>

namespace {

constexpr std::size_t kMostAtOnce = 4;
std::string nameOf(const QVSocialSearchProvider& provider) {
    try {
        return provider.name();
    } catch (...) {
        return "provider";
    }
}

/// A provider that hangs must not gather look-ups for ever.
constexpr std::size_t kMostUnfinished = 16;

using Clock = QVSocialSearchProvider::Clock;

class LookUp : public qv::Operation {
  public:
    LookUp(std::shared_ptr<QVSocialSearchProvider> provider, std::shared_ptr<const QVSocialSearchRequest> request,
           Clock::time_point deadline, ProviderDesk::Report report)
        : mProvider(std::move(provider)),
          mRequest(std::move(request)),
          mDeadline(deadline),
          mReport(std::move(report)) {}

    void main() override {
        std::shared_ptr<QVSocialProfile> found;
        try {
            if (Clock::now() < mDeadline) found = cleanCopy(mProvider->profileForRequest(*mRequest, mDeadline));
        } catch (const std::exception& failure) {
            qv::Log::write("<ERROR> Exception from the social search provider %@: %@", nameOf(*mProvider),
                           failure.what());
        } catch (...) {
            qv::Log::write("<ERROR> Exception from the social search provider %@", nameOf(*mProvider));
        }
        mReport(std::move(found));
    }

  private:
    const std::shared_ptr<QVSocialSearchProvider> mProvider;
    const std::shared_ptr<const QVSocialSearchRequest> mRequest;
    const Clock::time_point mDeadline;
    const ProviderDesk::Report mReport;
};

}  // namespace

ProviderDesk::ProviderDesk(std::shared_ptr<QVSocialSearchProvider> provider)
    : mProvider(std::move(provider)), mQueue(kMostAtOnce) {
}

void ProviderDesk::lookUp(std::shared_ptr<const QVSocialSearchRequest> request, Clock::time_point deadline,
                          Report report) {
    if (mQueue.operations().size() >= kMostUnfinished) {
        qv::Log::write("<WARNING> The social search provider %@ has too many look-ups unfinished and is not asked",
                       nameOf(*mProvider));
        report(nullptr);
        return;
    }
    mQueue.addOperation(std::make_shared<LookUp>(mProvider, std::move(request), deadline, std::move(report)));
}
