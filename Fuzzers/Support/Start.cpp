#include "QVPlatform/Bundle.h"
#include "QVPlatform/Log.h"

#include <optional>
#include <string>

/// Messages are formatted, since that is part of what is tried, and go nowhere.
extern "C" int LLVMFuzzerInitialize(int*, char***);

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    qv::Log::setSink([](std::string_view) {});
    qv::Bundle::setLocalizer([](std::string_view) -> std::optional<std::string> { return std::nullopt; });
    qv::Bundle::setResourceFolder(QV_SOURCE_DIR "/Resources");
    return 0;
}
