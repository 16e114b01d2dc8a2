#pragma once

#include "QVSocialSearch/QVLinkFetcher.h"
#include "QVSocialSearch/QVSocialSearchProvider.h"
#include "SocialSearch/SocialFixtures.h"
#include "Support/CapturedLog.h"
#include "Support/ScriptedServer.h"
#include "Support/TestImages.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <utility>

namespace social {

using Clock = QVSocialSearchProvider::Clock;

inline std::shared_ptr<QVSocialSearchRequest> requestFor(QVString address, QVString requestID = "note-1") {
    auto request = QVSocialSearchRequest::initWithEmailAddress(std::move(address));
    request->setRequestID(std::move(requestID));
    return request;
}

/// Far enough for everything that answers.
inline Clock::time_point soonEnough() {
    return Clock::now() + std::chrono::minutes(1);
}

/// Time for what answers at once, also on a busy machine, and not much more.
inline Clock::time_point soonOver() {
    return Clock::now() + std::chrono::milliseconds(1500);
}

/// Nothing that is asked now could be handed over any more.
inline Clock::time_point tooLate() {
    return Clock::now() + std::chrono::milliseconds(200);
}

/// What the tests of the services share: a server on loopback that stands for the service, another one for what it
/// links to, and links that may lead there.
class ServiceFixture : public testing::Test {
  protected:
    using Server = testsupport::ScriptedServer;

    ServiceFixture() { allowPrivateAddresses(true); }
    ~ServiceFixture() override { QVLinkFetcher::setPolicy({}); }

    static void allowPrivateAddresses(bool allowed) {
        QVLinkPolicy policy;
        policy.allowsPrivateAddresses = allowed;
        QVLinkFetcher::setPolicy(policy);
    }

    static qv::Data picture() {
        static const qv::Data bytes = testsupport::makePNG(testsupport::quarters(4, 4));
        return bytes;
    }
    static std::string pictureAnswer() {
        const qv::Data bytes = picture();
        return Server::answer(200, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    }

    testsupport::CapturedLog mLog;
    Server mService;
    Server mElsewhere;
};

}  // namespace social
