#pragma once

#include "People/MainLoop.h"
#include "QVCardScan/QVCardProcessingResponse.h"
#include "QVCardScan/QVSocialSearchResult.h"

#include <memory>
#include <optional>
#include <string>

namespace qvhost {

/// What a search for the card's person came to.
struct SearchOutcome {
    enum class Kind {
        NoAddress,  ///< the card has no e-mail address to search by
        NotFound,
        Found,
        TimedOut,
    };
    Kind kind = Kind::NoAddress;
    /// What the notification said; absent without one.
    std::optional<QVSocialSearchResultType> resultType;
    /// Who was found; null otherwise.
    std::shared_ptr<QVSocialProfile> profile;
};

/// Has the library look up who the person on a card is, and waits for its notification.
class SocialLookup {
  public:
    /// Sets what the library wants before it searches. To be made before the card is read, because it says in its
    /// response whether a search is possible.
    SocialLookup(MainLoop& loop, const std::string& key, const std::string& secret);

    /// When somebody is found, the response then holds the new note and picture, and its contact what was found.
    SearchOutcome run(const std::shared_ptr<QVCardProcessingResponse>& response);

  private:
    std::optional<QVSocialSearchResult> search(const std::shared_ptr<QVCardProcessingResponse>& response);

    MainLoop& mLoop;
};

}  // namespace qvhost
