#pragma once

#include "Page/PageKey.h"
#include "Page/PageRequest.h"

#include <cstdint>
#include <string>

namespace qvhost {

/// Who may ask for what. A request passes when it names this program as its host (other names may have been made to
/// mean this machine by somebody else), comes from no other site's page, and brings the key. The others learn nothing,
/// not even what there is.
class PageGate {
  public:
    enum class Entry {
        Refused,
        /// Came with the key in its address; goes on with the cookie.
        Door,
        /// What every copy of the program has: the page's own files.
        Files,
        /// Everything else.
        Inside,
    };

    /// `isForNetwork`: whether the program listens where others can reach it; its host may then be any number.
    PageGate(PageKey key, std::uint16_t port, bool isForNetwork)
        : mKey(std::move(key)), mPort(port), mIsForNetwork(isForNetwork) {}

    /// Decided by the header alone, before a body is taken.
    Entry entryFor(const PageRequest& request) const;

    const PageKey& key() const { return mKey; }

  private:
    bool isOwnHost(const std::string& host) const;

    PageKey mKey;
    std::uint16_t mPort;
    bool mIsForNetwork;
};

}  // namespace qvhost
