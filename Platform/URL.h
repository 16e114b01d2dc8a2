#pragma once

#include "Export.h"

#include <optional>
#include <string>
#include <string_view>

namespace qv {

/// An address that follows the URI grammar (RFC 3986), absolute or relative. A plain value.
class QV_EXPORT URL {
  public:
    /// `URLWithString:` Nothing when the text is empty or breaks the grammar (a space, a control or non-ASCII
    /// character, a bad percent escape, an unclosed bracket, a port that is not a number).
    static std::optional<URL> URLWithString(std::string_view text);

    /// The text as it was given.
    const std::string& absoluteString() const { return mText; }

    /// The scheme in lower case; empty for a relative reference.
    std::string scheme() const;

    /// The host as it was written, without user information, port or an address's brackets; empty when there is none.
    std::string host() const;

    friend bool operator==(const URL&, const URL&) = default;

  private:
    explicit URL(std::string text) : mText(std::move(text)) {}
    std::string mText;
};

}  // namespace qv
