#include "Source/BareCurl.h"

#include <curl/curl.h>

#include <stdexcept>
#include <utility>

namespace benchmarksupport {

static std::size_t append(char* bytes, std::size_t, std::size_t size, void* answer) {
    static_cast<std::string*>(answer)->append(bytes, size);
    return size;
}

BareCurl::BareCurl(std::string url, const qv::Data& body, int threadCount, std::function<void()> beforePost)
    : mURL(std::move(url)), mBody(body), mBeforePost(std::move(beforePost)) {
    for (int index = 0; index < threadCount; ++index)
        mThreads.emplace_back([this] { serve(); });
}

BareCurl::~BareCurl() {
    {
        const std::lock_guard lock(mMutex);
        mStops = true;
    }
    mChanged.notify_all();
    for (std::thread& thread : mThreads)
        thread.join();
}

Times BareCurl::post(int count) {
    const Times start = timesSoFar();
    std::unique_lock lock(mMutex);
    mWaiting = mUnfinished = count;
    mChanged.notify_all();
    mChanged.wait(lock, [this] { return mUnfinished == 0; });
    const Times end = timesSoFar();
    if (mFailed) throw std::runtime_error("libcurl failed");
    return {end.processor - start.processor, end.wall - start.wall};
}

void BareCurl::serve() {
    CURL* const curl = curl_easy_init();
    curl_slist* const headers = curl_slist_append(
        curl_slist_append(curl_slist_append(nullptr, "Content-Type: image/jpeg"), "content-language: en"), "Expect:");
    std::string answer;
    curl_easy_setopt(curl, CURLOPT_URL, mURL.c_str());
    curl_easy_setopt(curl, CURLOPT_HTTPHEADER, headers);
    curl_easy_setopt(curl, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(mBody.size()));
    curl_easy_setopt(curl, CURLOPT_POSTFIELDS, mBody.data());
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, append);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &answer);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    std::unique_lock lock(mMutex);
    while (true) {
        mChanged.wait(lock, [this] { return mStops || mWaiting > 0; });
        if (mStops) break;
        --mWaiting;
        lock.unlock();
        mBeforePost();
        answer.clear();
        const bool failed = curl_easy_perform(curl) != CURLE_OK;
        lock.lock();
        mFailed = mFailed || failed;
        if (--mUnfinished == 0) mChanged.notify_all();
    }
    lock.unlock();
    curl_slist_free_all(headers);
    curl_easy_cleanup(curl);
}

}  // namespace benchmarksupport
