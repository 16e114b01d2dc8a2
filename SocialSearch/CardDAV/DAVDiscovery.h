#pragma once

#include "CardDAV/DAVClient.h"
#include "CardDAV/DAVMultistatus.h"

#include <optional>
#include <string>
#include <vector>

/// Looks for the collection of cards from any address of a server (RFC 6764, 6; RFC 6352, 7.1; RFC 5397): the address
/// itself or what lies below it, or the user it speaks of, his address books, and the first of those.
class DAVDiscovery {
  public:
    explicit DAVDiscovery(DAVClient& client) : mClient(client) {}

    /// Nothing when there is none; `error()` says why then.
    std::optional<qv::URL> collection();
    const std::optional<qv::Error>& error() const { return mError; }

  private:
    /// An answer, and where it came from.
    struct Page {
        qv::URL url;
        std::vector<DAVResource> resources;
    };
    /// How much an error says to somebody who has to mend it.
    enum class Weight { None, Little, Much };

    std::optional<Page> ask(const qv::URL& url, bool withMembers);
    std::optional<qv::URL> startingFrom(const qv::URL& url);
    std::optional<qv::URL> throughUser(const Page& page, const std::string& principal);
    std::optional<qv::URL> throughHome(const Page& page, const std::string& home);
    std::optional<qv::URL> firstBookIn(const qv::URL& home);
    /// A reference in an answer; nothing, with an error, when it leads away.
    std::optional<qv::URL> resolve(const Page& page, const std::string& href);
    std::nullopt_t fail(qv::Error error, Weight weight);

    DAVClient& mClient;
    std::optional<qv::Error> mError;
    Weight mWeight = Weight::None;
    /// Whoever is not answered or refused at one place is so at the others, and whoever gave a path that leads nowhere
    /// does not want another address book.
    bool mIsOver = false;
};
