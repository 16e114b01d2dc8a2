// What the profile service answers.

#include "QVPlatform/JSON.h"
#include "Services/GravatarProfile.h"
#include "Support/Input.h"
#include "Support/Require.h"

using fuzzing::require;

namespace {

void checkPage(const QVString& link) {
    if (!link) return;
    const std::string small = qv::Text::lowercased(*link);
    require(small.starts_with("http://") || small.starts_with("https://"), "a page is http or https");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const auto object = qv::JSON::read(qv::Data(bytes, bytes + count));
    if (!object) return 0;
    const auto profile = profileOfGravatar(*object);
    require(profile != nullptr, "an answer gives a profile");
    checkPage(profile->profileURLLinkedInPublic());
    checkPage(profile->profileURLFacebook());
    (void)pictureLinkOfGravatar(*object);
    require(fuzzing::isUTF8(profile->description()), "a profile is UTF-8");
    return 0;
}
