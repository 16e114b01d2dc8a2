#pragma once

#include "QVPlatform/Export.h"
#include "QVSocialSearch/QVSocialSearchProvider.h"

#include <functional>
#include <memory>
#include <string>

/// How domains are asked.
struct QVWebFingerOptions {
    /// Where a domain's questions go ("https://example.com", without a path); empty: to the domain, over https. An
    /// address that this gives is the host's choice, so it may lie in the own network; what it redirects to may not.
    std::function<std::string(const std::string& domain)> originOfDomain;
};

/// Asks the domain of the e-mail address about its own people (WebFinger, RFC 7033), and takes what it links to: pages
/// on LinkedIn, Facebook and Twitter (profile-page links, by their host), a vCard on the domain itself (relation
/// "vcard", or type text/vcard), and a picture (avatar links, else the vCard's).
///
/// No search asks it unless the host adds it to the search manager, because each look-up tells the owner of the domain
/// that somebody has that person's card.
///
/// Everything is fetched by the rules of `QVLinkFetcher`, redirects included, and ends with the deadline. The vCard
/// gives a name only when it has a given and a family name; its title and company have the source
/// `QVSocialProfileSourceWebFinger`, and so never replace a card's. Nothing is remembered. Any thread may call.
class QV_EXPORT QVWebFingerProvider : public QVSocialSearchProvider {
  public:
    /// A provider that asks domains so.
    explicit QVWebFingerProvider(QVWebFingerOptions options = {});

    std::string name() const override;
    std::shared_ptr<QVSocialProfile> profileForRequest(const QVSocialSearchRequest& request,
                                                       Clock::time_point deadline) override;

  private:
    const QVWebFingerOptions mOptions;
};
