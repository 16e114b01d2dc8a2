#include "Services/ServiceRequest.h"

#include <utility>

qv::HTTPRequest serviceRequest(qv::URL url, std::string mediaTypes, QVSocialSearchProvider::Clock::time_point end) {
    // Those in use have a few thousand bytes.
    constexpr std::size_t kLargestAnswer = std::size_t{512} << 10;
    qv::HTTPRequest request{.method = "GET", .url = std::move(url)};
    // Services turn away who does not say what he is.
    request.headers = {{"Accept", std::move(mediaTypes)}, {"User-Agent", "QVSocialSearch"}};
    request.deadline = end;
    request.maximumBodySize = kLargestAnswer;
    return request;
}
