#include "Page/FieldKind.h"

#include "QVCardScan/QVBusinessCardField.h"

#include <algorithm>
#include <iterator>

namespace qvhost::FieldKind {
namespace {

/// By type.
constexpr std::string_view kWords[] = {"other", "name",    "email", "phone",  "title",   "company", "department",
                                       "url",   "address", "fax",   "mobile", "twitter", "skype"};
static_assert(std::size(kWords) == QVBusinessCardFieldTypeSkype + 1);

}  // namespace

std::string word(std::int32_t type) {
    const bool isKnown = type > 0 && type < static_cast<std::int32_t>(std::size(kWords));
    return std::string(kWords[isKnown ? type : 0]);
}

std::optional<std::int32_t> type(std::string_view word) {
    const auto* found = std::find(std::begin(kWords), std::end(kWords), word);
    if (found == std::end(kWords)) return std::nullopt;
    return static_cast<std::int32_t>(found - std::begin(kWords));
}

}  // namespace qvhost::FieldKind
