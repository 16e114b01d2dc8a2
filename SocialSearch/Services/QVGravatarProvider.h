#pragma once

#include "QVPlatform/Export.h"
#include "QVSocialSearch/QVSocialSearchProvider.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

/// How the service is asked.
struct QVGravatarOptions {
    /// The host's key for the service, as text; blanks around it do not count. With a key the service says more and may
    /// be asked more often. Sent to `baseURL` only, there over https (or to the own machine), and never logged.
    QVString apiKey;
    /// Where the service is, without "/v3". An http or https address.
    std::string baseURL = "https://api.gravatar.com";
    /// The time of day, which tells how long answers hold; empty: the system's.
    std::function<std::chrono::system_clock::time_point()> clock;
};

/// Looks people up in Gravatar, where they publish a profile of themselves under a digest of their e-mail address
/// (REST API 3.0.0, https://docs.gravatar.com/rest/).
///
/// No search asks it unless the host adds it to the search manager, because each look-up tells a third party whom the
/// user has met: the digest hides an address only from those who do not know it.
///
/// Name (a given first and last name only), title, company, location, phones, e-mail, LinkedIn and Facebook pages and
/// Twitter handles (by the link's host) are taken, and the picture is fetched within the deadline. Title and company
/// have the source `QVSocialProfileSourceGravatar`, and so never replace a card's.
///
/// People who are found are remembered for a day (an hour when time ran out before their picture came), those who are
/// not for an hour, a few hundred in all, in memory; failures are not. When the service asks for a pause, by status 429
/// or by its rate-limit headers, it is left alone for so long. Redirects are not followed. Any thread may call.
class QV_EXPORT QVGravatarProvider : public QVSocialSearchProvider {
  public:
    /// A provider that asks the service so.
    explicit QVGravatarProvider(QVGravatarOptions options = {});
    ~QVGravatarProvider() override;

    std::string name() const override;
    std::shared_ptr<QVSocialProfile> profileForRequest(const QVSocialSearchRequest& request,
                                                       Clock::time_point deadline) override;

  private:
    struct State;
    const std::unique_ptr<State> mState;
};
