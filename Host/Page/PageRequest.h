#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qvhost {

/// What a browser asks of the page: what of an HTTP request counts. A header that is missing is empty.
struct PageRequest {
    std::string method;
    /// As it was sent: path and query.
    std::string target;
    std::string host;
    std::string origin;
    /// `Sec-Fetch-Site`: where the page that asks comes from, as its browser says.
    std::string fetchSite;
    std::string cookie;
    std::string contentType;
    std::string body;

    std::string_view path() const { return std::string_view(target).substr(0, target.find('?')); }
    /// The value of that name in the query, its percent signs resolved; empty when there is none.
    std::string parameter(std::string_view name) const;
};

struct PageAnswer {
    unsigned status = 200;
    /// The MIME type; empty when there is no body.
    std::string type;
    std::string body;
    /// A file to send instead of the body; removed once it is opened.
    std::filesystem::path file;
    /// Headers besides those that every answer has.
    std::vector<std::pair<std::string, std::string>> headers;
    /// Whether this is a note: markup that is shown in a frame of the page, with a policy of its own.
    bool isNote = false;

    static PageAnswer nothing(unsigned status) {
        PageAnswer answer;
        answer.status = status;
        return answer;
    }
};

/// Takes the answer to a request, once, from any thread.
using PageAnswering = std::function<void(PageAnswer)>;

}  // namespace qvhost
