#pragma once

#include "QVPlatform/Export.h"

#include <string>
#include <string_view>

/// The parts of a person's name, as vCard's N has them.
///
/// Nobody can split names with certainty, so the rules are few, and what they do not know stays together:
/// - titles in front ("Dr.", "Prof. Dr. med.") and degrees and generations behind ("PhD", "Jr.", "III"), with a comma
///   before them or not, are prefix and suffix;
/// - "Family, Given" is turned round;
/// - else the last word is the family name and the first one the given name; what lies between is additional. A family
///   name begins with its particles ("van den Berg", "de la Cruz"), and "y" joins two words to one;
/// - one or more whole words in capitals among others are the family name, wherever they stand ("MAO Zedong");
/// - a single word is the given name, behind a title the family name ("Dr. Smith");
/// - a name in Chinese, Japanese or Korean script has the family name first: the first word, or without a blank the
///   first character, or two where a known double name or four Chinese characters say so. Kana without a blank stay
///   together, as family name.
/// - a text of more than 1000 bytes is no name: all of it is the given name.
/// The parts hold every word of the name once, in its own spelling.
struct QV_EXPORT QVPersonName {
    /// Family name.
    std::string family;
    /// Given name.
    std::string given;
    /// What lies between.
    std::string additional;
    /// Titles in front.
    std::string prefix;
    /// Degrees and generations behind.
    std::string suffix;

    /// `nameWithText:` The parts of a name as it is shown.
    static QVPersonName nameWithText(std::string_view displayName);
};
