#pragma once

#include "QVCardScan/QVCardScanTypes.h"
#include "QVPlatform/Export.h"

#include <cstddef>
#include <string>

/// Whether recognised names and e-mail addresses are repaired when they are assigned to a field. Not a setting.
inline constexpr bool QVCardScanResultFormatterEnabled = true;

/// Repairs recognised person names and e-mail addresses. Stateless: every operation is a function of its arguments and
/// may be called from any thread. An absent input yields an absent result throughout.
class QV_EXPORT QVCardScanResultFormatter {
  public:
    QVCardScanResultFormatter() = delete;

    /// `normalizedNameForName:`
    static QVString normalizedNameForName(const QVString& name);
    /// `sanitizeNameString:`
    static QVString sanitizeNameString(const QVString& string);
    /// `stripDoubleSpaceFrom:`
    static QVString stripDoubleSpaceFrom(const QVString& string);
    /// `recoverMiddleNameDotString:`
    static QVString recoverMiddleNameDotString(const QVString& string);

    /// `normalizedEmailForEmail:`
    static QVString normalizedEmailForEmail(const QVString& email);
    /// `sanitizeEmailString:`
    static QVString sanitizeEmailString(const QVString& string);
    /// `fixWrongTLDIfAny:`
    static QVString fixWrongTLDIfAny(const QVString& email);
    /// `replaceMutableString:fromIndex:withString:` The index counts UTF-16 units.
    static void replaceMutableString(std::string& mutableString, std::size_t fromIndex, const std::string& withString);
};
