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

    /// `URLWithString:relativeToURL:` The complete address that a reference means in a document at `relativeToURL`
    /// (RFC 3986, 5.2); a complete one stays. Dots in the path are resolved, blanks and non-ASCII bytes escaped.
    /// Nothing when one of them is no address.
    static std::optional<URL> URLWithString(const std::string& text, const URL& relativeToURL);

    /// The text as it was given.
    const std::string& absoluteString() const { return mText; }

    /// The scheme in lower case; empty for a relative reference.
    std::string scheme() const;

    /// The host as it was written, without user information, port or an address's brackets; empty when there is none.
    std::string host() const;

    /// The path as it was written, with its escapes; empty when there is none.
    std::string path() const;

    /// Whether both are complete addresses with the same scheme, host and port, which may go without saying.
    bool isSameOriginAs(const URL& other) const;

    friend bool operator==(const URL&, const URL&) = default;

  private:
    explicit URL(std::string text) : mText(std::move(text)) {}
    std::string mText;
};

}  // namespace qv
