#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qv {

/// Collects the header lines of an answer; those of an interim answer (status 1xx) give way to the next.
class HTTPHeaderReader {
  public:
    using Headers = std::vector<std::pair<std::string, std::string>>;

    /// One line as it arrived. False when the answer's headers have grown beyond reason.
    bool readLine(std::string_view received);

    /// What was read; the reader is empty after.
    Headers takeHeaders() { return std::exchange(mHeaders, {}); }

  private:
    std::size_t mSize = 0;
    Headers mHeaders;
};

}  // namespace qv
