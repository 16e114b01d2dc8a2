#pragma once

#include <string_view>

namespace qv::recognition::words {

/// Word lists of the main European languages. Every word is asked for in its folded form (lower case, no accents).
/// Any thread.

bool isTitle(std::string_view word);           ///< manager, geschaftsfuhrer, directeur
bool isTitleQualifier(std::string_view word);  ///< senior, chief, vertriebs: part of a title, not one by itself
bool isDepartment(std::string_view word);      ///< department, abteilung, faculty
bool isArea(std::string_view word);            ///< sales, relations, einkauf: what a department is for
bool isAreaQualifier(std::string_view word);   ///< international, technical: beside an area, not one by itself
bool isLegalForm(std::string_view word);       ///< gmbh, ltd, sarl
bool isCompany(std::string_view word);         ///< group, bank, consulting: names of firms often hold it
bool isKin(std::string_view word);             ///< sons, söhne, fils: who else the firm belongs to, after an "&"
bool isConjunction(std::string_view word);     ///< &, und, et
bool isStreet(std::string_view word);          ///< street, rue, via; also by ending, as in hauptstrasse
bool isAddress(std::string_view word);         ///< floor, suite, postfach: beside streets
bool isCountry(std::string_view word);
bool isState(std::string_view word);  ///< states of countries whose addresses print them, names and short forms
bool isGivenName(std::string_view word);
bool isHonorific(std::string_view word);    ///< dr, prof, mr, ing
bool isPostNominal(std::string_view word);  ///< phd, mba
bool isParticle(std::string_view word);     ///< von, de, van
bool isFunction(std::string_view word);     ///< the, and, of: words of running text
bool isTopLevelDomain(std::string_view word);

}  // namespace qv::recognition::words
