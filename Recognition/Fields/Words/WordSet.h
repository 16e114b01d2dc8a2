#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

namespace qv::recognition {

/// A fixed list of folded words (see `folded`), written as one text with spaces between them. Never changes after it
/// was made; any thread.
class WordSet {
  public:
    /// Keeps no copy: the text has to live as long as the set, as a literal does.
    explicit WordSet(std::string_view words) {
        while (!words.empty()) {
            const auto end = words.find(' ');
            if (end != 0) mWords.insert(words.substr(0, end));
            words = end == std::string_view::npos ? std::string_view() : words.substr(end + 1);
        }
    }

    bool has(std::string_view word) const { return mWords.count(word) != 0; }

  private:
    std::unordered_set<std::string_view> mWords;
};

}  // namespace qv::recognition
