#pragma once

#include <string>

namespace qvhost {

/// A line on standard error that says what is being waited for, while this object lives; only when that is a terminal.
/// An empty text shows nothing and leaves alone what somebody else shows.
class Progress {
  public:
    explicit Progress(const std::string& text);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

  private:
    bool mShows;
};

}  // namespace qvhost
