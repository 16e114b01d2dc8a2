#pragma once

#include <string>

namespace qvhost {

/// A line on standard error that says what is being waited for, while this object lives; only when that is a terminal.
class Progress {
  public:
    explicit Progress(const std::string& text);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
};

}  // namespace qvhost
