#include "Soak/PeopleProviders.h"

#include "Soak/PlannedCard.h"
#include "SocialSearch/FakeProvider.h"
#include "SocialSearch/SocialFixtures.h"

#include <stdexcept>
#include <utility>

namespace soak {

namespace {

int numberOf(const QVSocialSearchRequest& request) {
    return PlannedCard::numberIn(request.emailAddress().value_or("")).value_or(0);
}

std::shared_ptr<QVSocialProfile> onNetwork(const QVSocialSearchRequest& request) {
    const int number = numberOf(request);
    if (number % 3 != 0) return nullptr;
    auto profile = social::profile("Jordan " + std::to_string(number), QVSocialProfileSourceProfessionalNetwork);
    profile->setProfileURLLinkedInPublic("https://network.example.com/in/" + std::to_string(number));
    profile->setJobTitle("Director");
    profile->setJobTitleSource(QVSocialProfileSourceProfessionalNetwork);
    profile->mergeWithEmailSet(social::emails({{"work", "jordan-" + std::to_string(number) + "@example.org"}}));
    return profile;
}

std::shared_ptr<QVSocialProfile> onPeoplesPage(const QVSocialSearchRequest& request) {
    const int number = numberOf(request);
    if (number % 5 == 0) return nullptr;
    auto profile = social::profile("Jo " + std::to_string(number), QVSocialProfileSourceFacebook);
    profile->setProfileURLFacebook("https://people.example.com/" + std::to_string(number));
    profile->mergeWithPhoneNumberSet(
        social::phones({{"mobile", "+1 202 555 0199"}, {std::nullopt, "+1 202 555 0198"}}));
    return profile;
}

}  // namespace

std::shared_ptr<QVSocialSearchManager> PeopleProviders::manager() {
    auto manager = std::make_shared<QVSocialSearchManager>();
    manager->addProvider(social::provider(onNetwork, "network"));
    manager->addProvider(social::provider(onPeoplesPage, "people"));
    manager->addProvider(social::provider(
        [](const QVSocialSearchRequest&) -> std::shared_ptr<QVSocialProfile> { throw std::runtime_error("planned"); },
        "failing"));
    manager->addProvider(social::provider(
        [late = mLate](const QVSocialSearchRequest&) -> std::shared_ptr<QVSocialProfile> {
            std::unique_lock lock(late->mutex);
            const auto gate = std::exchange(late->gate, nullptr);
            lock.unlock();
            if (gate) (void)gate->waitFor();
            return nullptr;
        },
        "late"));
    return manager;
}

void PeopleProviders::waitFor(std::shared_ptr<testsupport::Gate> gate) {
    const std::lock_guard lock(mLate->mutex);
    mLate->gate = std::move(gate);
}

}  // namespace soak
