#include "Support/HostProgram.h"

#include "Support/TestSupport.h"

#include <utility>

namespace testsupport {

ProcessCall hostCall(std::vector<std::string> arguments) {
    ProcessCall call;
    call.program = std::filesystem::path(QV_BINARY_DIR) / "bin/qvcardscan";
    call.arguments = std::move(arguments);
    for (const char* variable :
         {"QVCARDSCAN_TOKEN", "QVCARDSCAN_LOG", "QVCARDSCAN_SEARCH_KEY", "QVCARDSCAN_SEARCH_SECRET",
          "QVCARDSCAN_PROFILE_SERVICE_KEY", "QVCARDSCAN_CARDDAV_USER", "QVCARDSCAN_CARDDAV_PASSWORD"})
        call.environment[variable] = std::nullopt;
    return call;
}

ProcessResult runHost(std::vector<std::string> arguments) {
    return runProcess(hostCall(std::move(arguments)));
}

std::string hostData(std::string_view name) {
    return (testsFolder() / "Host/Data" / name).string();
}

std::string fakeRecognizer() {
    return std::string(QV_BINARY_DIR) + "/bin/FakeRecod";
}

}  // namespace testsupport
