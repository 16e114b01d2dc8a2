#include "QVSocialSearch/QVLinkFetcher.h"

#include "QVPlatform/Atomic.h"
#include "QVPlatform/HTTPClient.h"
#include "QVPlatform/Log.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <utility>

namespace {

/// Never destroyed: threads may still fetch while the process ends.
struct State {
    qv::Atomic<QVLinkPolicy> policy;
    qv::Atomic<std::shared_ptr<const QVLinkFetcher::Fetcher>> fetcher;
};

State& state() {
    static State* const shared = new State;
    return *shared;
}

std::optional<qv::Data> fetch(const std::string& link, std::optional<QVLinkFetcher::Clock::time_point> deadline) {
    const auto url = qv::URL::URLWithString(link);
    if (!url) return std::nullopt;
    const QVLinkPolicy policy = state().policy.load();
    qv::HTTPRequest request{.method = "GET", .url = *url};
    request.followsRedirects = true;
    request.totalSeconds = std::max(policy.totalSeconds, 1L);
    request.deadline = deadline;
    request.maximumBodySize = policy.maximumSize;
    request.onlyPublicAddresses = !policy.allowsPrivateAddresses;
    auto response = qv::HTTPClient::sendSynchronousRequest(request);
    constexpr long kOK = 200;
    if (response.error || response.status != kOK) return std::nullopt;
    return std::move(response.body);
}

std::optional<qv::Data> fetchAsChosen(const QVString& link, std::optional<QVLinkFetcher::Clock::time_point> deadline) {
    if (!link) return std::nullopt;
    const auto fetcher = state().fetcher.load();
    if (!fetcher) return fetch(*link, deadline);
    try {
        return (*fetcher)(*link);
    } catch (const std::exception& failure) {
        qv::Log::write("<ERROR> Exception from the host's link fetcher: %@", failure.what());
    } catch (...) {
        qv::Log::write("<ERROR> Exception from the host's link fetcher");
    }
    return std::nullopt;
}

}  // namespace

std::optional<qv::Data> QVLinkFetcher::contentsOfLink(const QVString& link) {
    return fetchAsChosen(link, std::nullopt);
}

std::optional<qv::Data> QVLinkFetcher::contentsOfLink(const QVString& link, Clock::time_point deadline) {
    if (Clock::now() >= deadline) return std::nullopt;
    return fetchAsChosen(link, deadline);
}

QVLinkPolicy QVLinkFetcher::policy() {
    return state().policy.load();
}

void QVLinkFetcher::setPolicy(QVLinkPolicy policy) {
    state().policy.store(policy);
}

void QVLinkFetcher::setFetcher(Fetcher fetcher) {
    state().fetcher.store(fetcher ? std::make_shared<const Fetcher>(std::move(fetcher)) : nullptr);
}
