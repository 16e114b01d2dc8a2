#pragma once

#include <string_view>

namespace qvhost {

/// Whether one name comes before another as people count: "card2" before "card10". The case of letters and zeros before
/// a number decide only between names that are otherwise the same. A strict total order, also of names that are no
/// text.
bool comesBefore(std::string_view one, std::string_view other);

}  // namespace qvhost
