#pragma once

#include "QVPlatform/Export.h"
#include "QVPlatform/Object.h"
#include "QVSocialSearch/QVSocialSearchProvider.h"
#include "QVSocialSearch/QVSocialSearchRequest.h"
#include "QVSocialSearch/QVSocialSearchResponse.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

class ProviderDesk;

/// Looks people up: asks all providers side by side, on threads of their own, and merges what they find.
///
/// Order of trust: the host's address book first (always asked when the host has chosen one), then the providers in
/// their order. Of a name, title, company, link or picture the first one stays, except that a title or company from a
/// professional network (source 1) comes before all others. Lists are joined in that order, without duplicates.
///
/// A provider that fails, throws or is late costs its own part only; one that has too many look-ups unfinished is not
/// asked. Links other than http and https are dropped, labels lose the characters of markup, and of
/// each kind of entry the first 500 are taken.
///
/// Any thread may call. Providers and completions may call the manager, and let it go.
class QV_EXPORT QVSocialSearchManager : public qv::Object {
  public:
    /// Gets the answer; on the main executor.
    using Completion = std::function<void(std::shared_ptr<QVSocialSearchResponse> response)>;
    /// Providers in their order of trust.
    using Providers = std::vector<std::shared_ptr<QVSocialSearchProvider>>;

    /// How long all providers together have, on the main executor's clock.
    static constexpr std::chrono::seconds kTimeForProviders{3};

    /// The process's manager.
    static std::shared_ptr<QVSocialSearchManager> sharedManager();
    /// Puts another in its place, for hosts with a search of their own; null brings the first one back.
    static void setSharedManager(std::shared_ptr<QVSocialSearchManager> manager);

    /// `init` A manager without providers, apart from the address book.
    QVSocialSearchManager();
    /// Searches that run go on and are answered.
    ~QVSocialSearchManager() override;

    /// `addSearchByRequest:completion:` Starts a search and calls the completion once on the process's main executor,
    /// never inside this call, at the latest when the providers' time is over. A null request, or one whose address is
    /// absent or blank, is answered at once with nothing found. The request is taken as it is now.
    virtual void addSearchByRequest(std::shared_ptr<QVSocialSearchRequest> request, Completion completion);

    /// The providers beside the address book, in their order of trust; null ones are left out.
    Providers providers() const;
    void setProviders(const Providers& providers);
    /// Adds a provider behind the others; null is ignored.
    void addProvider(std::shared_ptr<QVSocialSearchProvider> provider);

  private:
    using Desks = std::vector<std::shared_ptr<ProviderDesk>>;
    Desks desksForSearch() const;

    const std::shared_ptr<ProviderDesk> mAddressBookDesk;
    mutable std::mutex mMutex;
    Desks mDesks;
};
