#pragma once

#include "QVCardScan/QVCardScanTypes.h"
#include "QVPlatform/Export.h"

#include <cstddef>
#include <string>

/// Whether recognised names and e-mail addresses are repaired when they are assigned to a field. Not a setting.
inline constexpr bool QVCardScanResultFormatterEnabled = true;

/// Repairs recognised person names and e-mail addresses. Stateless: every operation is a function of its arguments and
/// may be called from any thread. An absent input yields an absent result throughout, an empty one an empty result.
/// Characters and lengths are those of UTF-16; malformed UTF-8 in a name becomes U+FFFD, in an address it vanishes.
class QV_EXPORT QVCardScanResultFormatter {
  public:
    QVCardScanResultFormatter() = delete;

    /// `normalizedNameForName:` A tidy display name: 'DR. JOHN F. SMITH, PH.D.' becomes 'Dr. John F. Smith Ph.D.'.
    static QVString normalizedNameForName(const QVString& name);
    /// `sanitizeNameString:` Without punctuation (but for "&-'"), white space at the ends and repeated spaces.
    static QVString sanitizeNameString(const QVString& string);
    /// `stripDoubleSpaceFrom:` Every run of spaces (U+0020) as one space.
    static QVString stripDoubleSpaceFrom(const QVString& string);
    /// `recoverMiddleNameDotString:` A dot after each word that is one upper-case letter; single spaces part the words.
    static QVString recoverMiddleNameDotString(const QVString& string);

    /// `normalizedEmailForEmail:` Lower-case, only characters of an address, with the dot before a known top-level
    /// domain put back where it was lost: `Jo@ZQCOM` becomes `jo@zq.com`.
    static QVString normalizedEmailForEmail(const QVString& email);
    /// `sanitizeEmailString:` Only ASCII letters, digits and ".+-_@", in lower case.
    static QVString sanitizeEmailString(const QVString& string);
    /// `fixWrongTLDIfAny:` With "." put before the first known top-level domain that ends the last label of the domain,
    /// unless that label is known itself. Literal and case-sensitive; at most that one dot is added.
    static QVString fixWrongTLDIfAny(const QVString& email);
    /// `replaceMutableString:fromIndex:withString:` Replaces everything from an index, in UTF-16 units, to the end. An
    /// index past the end is logged and changes nothing.
    static void replaceMutableString(std::string& mutableString, std::size_t fromIndex, const std::string& withString);
};
