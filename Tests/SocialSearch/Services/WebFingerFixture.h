#pragma once

#include "QVSocialSearch/QVWebFingerProvider.h"
#include "SocialSearch/Services/ServiceFixture.h"

#include <mutex>
#include <string>
#include <vector>

namespace social {

/// A provider that asks a server on loopback instead of the domains.
class WebFingerFixture : public ServiceFixture {
  protected:
    std::shared_ptr<QVSocialProfile> find(const std::string& address = "jordan@example.com",
                                          Clock::time_point deadline = soonEnough()) {
        return findAt(mService, address, deadline);
    }
    /// What is found when the domain answers with these links.
    std::shared_ptr<QVSocialProfile> found(const std::string& links) {
        Server service;
        service.respond(answerWith(links));
        return findAt(service, "jordan@example.com", soonEnough());
    }
    std::shared_ptr<QVSocialProfile> findAt(const Server& service, const std::string& address,
                                            Clock::time_point deadline) {
        QVWebFingerProvider provider({.originOfDomain = [&](const std::string& domain) {
            mDomains.push_back(domain);
            return service.url("");
        }});
        return provider.profileForRequest(*requestFor(address), deadline);
    }
    static std::string answerWith(const std::string& links) {
        return Server::answer(200, R"({"subject": "acct:jordan@example.com", "links": [)" + links + "]}",
                              "Content-Type: application/jrd+json\r\n");
    }
    static std::string link(const std::string& relation, const std::string& target, const std::string& type = "") {
        return R"({"rel": ")" + relation + R"(", "type": ")" + type + R"(", "href": ")" + target + "\"}";
    }
    static std::string page(const std::string& target) {
        return link("http://webfinger.net/rel/profile-page", target, "text/html");
    }
    static std::string avatar(const std::string& target) {
        return link("http://webfinger.net/rel/avatar", target, "image/png");
    }
    static std::string card(const std::string& lines) {
        return Server::answer(200, "BEGIN:VCARD\r\nVERSION:3.0\r\n" + lines + "END:VCARD\r\n",
                              "Content-Type: text/vcard\r\n");
    }

    std::vector<std::string> mDomains;
};

}  // namespace social
