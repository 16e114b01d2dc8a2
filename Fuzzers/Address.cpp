// Web addresses and references to them. The part before a byte 0x1E is the address, the one behind it a reference.

#include "QVPlatform/URL.h"
#include "Support/Input.h"
#include "Support/Require.h"

using fuzzing::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const auto parts = fuzzing::partsOf(fuzzing::textOf(bytes, count));
    const auto url = qv::URL::URLWithString(parts[0]);
    if (!url) return 0;
    require(url->absoluteString() == parts[0], "an address is the text that was given");
    (void)url->path();
    if (parts.size() < 2) return 0;
    const auto target = qv::URL::URLWithString(parts[1], *url);
    if (!target) return 0;
    require(qv::URL::URLWithString(target->absoluteString()) == target, "what is resolved is an address");
    require(url->isSameOriginAs(*target) == target->isSameOriginAs(*url), "origins are the same both ways");
    require(!target->scheme().empty() || url->scheme().empty(), "what is resolved is complete");
    return 0;
}
