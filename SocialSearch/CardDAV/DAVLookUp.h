#pragma once

#include "CardDAV/DAVCollection.h"

#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <string_view>

/// For which properties a server has shown that its own search finds what is there. Threads may share it.
class DAVTrust {
  public:
    bool has(std::string_view property) const;
    void add(std::string_view property);

  private:
    mutable std::mutex mMutex;
    std::set<std::string, std::less<>> mProperties;
};

/// Finds cards by what they say. The server is asked first; since some cannot search, or find nothing where there is
/// something, that it finds nothing is only believed once it has found a card that is known to be there. Otherwise
/// every card is read.
class DAVLookUp {
  public:
    using Matches = std::function<bool(const DAVCard& card)>;

    DAVLookUp(DAVCollection& collection, DAVTrust& trust) : mCollection(collection), mTrust(trust) {}

    /// Shows those that `matches` says are meant, each once. `property` (in capitals) contains `text` in each of them.
    void visit(std::string_view property, const std::string& text, const Matches& matches, Problems& problems,
               const DAVVisit& visit);

    /// The same without asking the server.
    void visitByReading(const Matches& matches, Problems& problems, const DAVVisit& visit);

  private:
    bool earnsTrust(std::string_view property, const std::vector<std::string>& hrefs);

    DAVCollection& mCollection;
    DAVTrust& mTrust;
};
