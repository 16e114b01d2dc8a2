#pragma once

#include "AddressBook/AddressBookProblems.h"
#include "CardDAV/DAVClient.h"
#include "CardDAV/DAVMultistatus.h"
#include "QVSocialSearch/QVVCard.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// A card, and where it was read.
struct DAVCard {
    qv::URL url;
    QVVCard card;

    /// The card's UID, or what stands for it.
    std::string UID() const;
};

/// Shown each card that was read; says whether it wants to see more.
using DAVVisit = std::function<bool(const DAVCard& card)>;

/// One card that was fetched for itself.
struct DAVReading {
    enum class State { Read, Missing, Broken, Failed };
    State state = State::Failed;
    /// Byte for byte, with the mark of just this version.
    std::string bytes{};
    std::string ETag{};
    /// Present when it was read.
    std::optional<DAVCard> card{};
    /// What is wrong with one that is broken, without anything of its contents, and why the reading failed.
    std::string problem{};
    qv::Error error{};
};

/// The cards of one collection, as one operation sees them. References that lead out of the collection are not
/// followed.
class DAVCollection {
  public:
    /// `client` must outlive it.
    DAVCollection(DAVClient& client, qv::URL url) : mClient(client), mURL(std::move(url)) {}

    const qv::URL& url() const { return mURL; }
    DAVClient& client() { return mClient; }

    /// References to the members that may be cards; nothing, and a failure, when the server does not tell.
    std::optional<std::vector<std::string>> list(Problems& problems);

    /// Fetches these cards together, in parts that fit into an answer. Those that are gone are left out. False when
    /// `visit` has seen enough, or nothing more can be fetched.
    bool visitCards(const std::vector<std::string>& hrefs, Problems& problems, const DAVVisit& visit);

    /// Shows the cards of which the server says that a property (its name in capitals) contains a text. False when it
    /// cannot be asked that, or not be answered whole.
    bool visitMatches(std::string_view property, std::string_view text, Problems& problems, const DAVVisit& visit);

    /// Fetches one card for itself.
    DAVReading read(const qv::URL& url);
    /// Whether a card that was read is still the same.
    bool isUnchanged(const DAVReading& reading);

  private:
    DAVAnswer report(std::string body);
    bool visitBatch(const std::vector<std::string>& hrefs, Problems& problems, const DAVVisit& visit);
    bool visitSingly(const std::vector<std::string>& hrefs, Problems& problems, const DAVVisit& visit);
    bool visitOne(const std::string& href, Problems& problems, const DAVVisit& visit);
    /// False when the visit is over.
    bool show(DAVResource& resource, Problems& problems, const DAVVisit& visit);
    /// The member that a reference means; nothing, and a problem unless it is the collection, for any other place.
    std::optional<qv::URL> member(const std::string& href, Problems& problems) const;

    DAVClient& mClient;
    const qv::URL mURL;
};
