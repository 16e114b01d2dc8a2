#pragma once

#include "QVPlatform/HTTPClient.h"

#include <curl/curl.h>

#include <memory>

namespace qv {

/// A libcurl handle for one exchange. Those of one thread share their connections. One at a time on a thread.
class CurlSession {
  public:
    CurlSession();
    ~CurlSession();
    CurlSession(const CurlSession&) = delete;
    CurlSession& operator=(const CurlSession&) = delete;

    /// Sets an option. The first failure is kept and ends the session before anything is sent.
    template <typename Value>
    void set(CURLoption option, Value value) {
        if (mFailure == CURLE_OK) mFailure = curl_easy_setopt(mHandle, option, value);
    }

    /// What this client never does, whatever the environment says.
    void restrict();

    /// `request` must outlive the session.
    void setRequest(const HTTPRequest& request);

    CURLcode perform();
    long status() const;

  private:
    struct ListDeleter {
        void operator()(curl_slist* list) const { curl_slist_free_all(list); }
    };

    void setBody(const HTTPRequest& request);
    void setHeaders(const HTTPRequest& request);
    void setLimits(const HTTPRequest& request);
    void restrictAddresses(const HTTPRequest& request);
    void appendHeader(const std::string& line);

    CURL* mHandle = nullptr;
    CURLcode mFailure = CURLE_OK;
    std::unique_ptr<curl_slist, ListDeleter> mHeaders;
};

}  // namespace qv
