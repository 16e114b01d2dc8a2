#pragma once

#include "QVSocialSearch/QVGravatarProvider.h"
#include "SocialSearch/Services/ServiceFixture.h"

#include <atomic>
#include <string>
#include <vector>

namespace social {

/// A provider whose service is on loopback and whose clock the test drives.
class GravatarFixture : public ServiceFixture {
  protected:
    using Provider = std::shared_ptr<QVGravatarProvider>;

    Provider provider(QVString apiKey = std::nullopt) { return providerAt(mService.url(""), std::move(apiKey)); }
    Provider providerAt(std::string baseURL, QVString apiKey = std::nullopt) {
        return std::make_shared<QVGravatarProvider>(QVGravatarOptions{
            .apiKey = std::move(apiKey), .baseURL = std::move(baseURL), .clock = [this] { return mNow.load(); }});
    }

    static std::shared_ptr<QVSocialProfile> find(const Provider& provider,
                                                 const std::string& address = "jordan@example.com",
                                                 Clock::time_point deadline = soonEnough()) {
        return provider->profileForRequest(*requestFor(address), deadline);
    }
    /// What is found when the service answers with this object.
    std::shared_ptr<QVSocialProfile> found(const std::string& object) {
        Server service;
        service.respond(Server::answer(200, object));
        return find(providerAt(service.url("")));
    }

    void pass(std::chrono::seconds time) { mNow = mNow.load() + time; }
    std::string inSeconds(long count) const {
        const auto moment = std::chrono::duration_cast<std::chrono::seconds>(mNow.load().time_since_epoch());
        return std::to_string(moment.count() + count);
    }
    std::size_t asked() const { return mService.requests().size(); }

    std::atomic<std::chrono::system_clock::time_point> mNow{
        std::chrono::system_clock::time_point(std::chrono::seconds(1'800'000'000))};
};

}  // namespace social
