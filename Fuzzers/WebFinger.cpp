// What a domain says of an account, and the vCard that it may refer to. The part before a byte 0x1E is the answer, the
// one behind it the vCard, and a third one the address that was asked for.

#include "QVPlatform/URL.h"
#include "Services/LinkedCard.h"
#include "Services/PublishedLinks.h"
#include "Services/WebFingerAccount.h"
#include "Services/WebFingerAnswer.h"
#include "Support/Input.h"
#include "Support/Require.h"

using fuzzing::require;

namespace {

void checkAnswer(const std::string& text) {
    const auto answer = readWebFingerAnswer(fuzzing::dataOf(text));
    if (!answer) return;
    QVSocialProfile profile;
    for (const std::string& page : answer->pages)
        takePublishedLink(page, profile);
    require(fuzzing::isUTF8(profile.description()), "a profile is UTF-8");
}

void checkAddress(const std::string& address) {
    const auto account = accountOfAddress(address);
    if (!account) return;
    const std::string question = webFingerQuery(*account);
    require(question.starts_with("/.well-known/webfinger?resource=acct%3A"), "the question is about an account");
    require(qv::URL::URLWithString("https://" + account->domain + question).has_value(), "the question is an address");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const auto parts = fuzzing::partsOf(fuzzing::textOf(bytes, count));
    checkAnswer(parts[0]);
    if (parts.size() > 1) {
        const auto profile = profileOfLinkedCard(fuzzing::dataOf(parts[1]));
        if (profile) require(fuzzing::isUTF8(profile->description()), "a profile is UTF-8");
    }
    if (parts.size() > 2) checkAddress(parts[2]);
    return 0;
}
