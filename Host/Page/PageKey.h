#pragma once

#include "Support/Result.h"

#include <optional>
#include <string>
#include <string_view>

namespace qvhost {

/// The secret that opens the page, and what follows from it. Whoever was not shown the program's terminal does not have
/// it.
class PageKey {
  public:
    /// The environment variable that may hold the key.
    static constexpr const char* kVariable = "QVCARDSCAN_PAGE_KEY";

    explicit PageKey(std::string key);
    /// The one line of the file, else of the environment variable, else a fresh one. Those that could be guessed are
    /// refused.
    static Result<PageKey> choose(const std::optional<std::string>& file);

    const std::string& text() const { return mKey; }
    /// The folder below which everything lies, "/…/". It keeps the cookie to itself, because browsers send cookies to
    /// every port of a host, and with that to other people's programs.
    const std::string& folder() const { return mFolder; }
    /// The header's value that gives a browser the key.
    std::string cookie() const;

    bool is(std::string_view given) const;
    /// Whether the key is among the cookies of a request.
    bool isIn(std::string_view cookies) const;

  private:
    std::string mKey;
    std::string mFolder;
};

}  // namespace qvhost
