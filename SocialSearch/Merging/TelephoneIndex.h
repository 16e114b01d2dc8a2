#pragma once

#include "Merging/PhoneDigits.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

/// The telephones seen so far. Numbers of one telephone end alike, so only those that do are compared.
class TelephoneIndex {
  public:
    /// Says whether the telephone is a new one. A text without any digit is only the same as itself.
    bool insert(std::string_view number);

  private:
    std::unordered_multimap<std::string, PhoneDigits> mByEnding;
    std::unordered_set<std::string> mTexts;
};
