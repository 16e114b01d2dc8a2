#pragma once

#include "Merging/PhoneDigits.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

/// The telephones seen so far. Numbers of one telephone end alike, so only those that do are compared, and of very many
/// that do only the first ones: nobody has so many, and who sends them must not make the host compare them all.
class TelephoneIndex {
  public:
    /// Says whether the telephone is a new one. A text without any digit is only the same as itself.
    bool insert(std::string_view number);

  private:
    bool insertDigits(PhoneDigits digits);

    std::unordered_map<std::string, std::vector<PhoneDigits>> mByEnding;
    std::unordered_set<std::string> mDigits;
    std::unordered_set<std::string> mTexts;
};
