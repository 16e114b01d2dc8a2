#pragma once

#include "QVCardScan/QVCardScanTypes.h"

#include <string>
#include <string_view>

/// The rows of a note's sections, each section's one after the other with nothing between them. Stateless.
namespace qvnote {

/// The ordered array where there is one, even an empty one; otherwise the set's members in its order.
template <typename Element, typename Set>
std::vector<Element> chosenList(const std::shared_ptr<std::vector<Element>>& ordered, const std::shared_ptr<Set>& set) {
    if (ordered) return *ordered;
    return set ? std::vector<Element>(set->begin(), set->end()) : std::vector<Element>();
}

using FieldList = std::vector<std::shared_ptr<QVVeltoContactField>>;
using HandleList = std::vector<std::string>;

std::string emailRows(const FieldList& fields);
std::string phoneRows(const FieldList& fields);
std::string twitterRows(const HandleList& handles);
std::string weiboRows(const HandleList& handles);
std::string addressRow(const std::string& address);
std::string linkedInRow(const std::string& URL);
std::string facebookRow(const std::string& URL);

/// The references to the card's own pictures; empty hashes are left out, nothing is escaped.
std::string attachments(const QVStringArray& hashes);

}  // namespace qvnote
