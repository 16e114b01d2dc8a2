#include "Support/HostProgram.h"

#include "Support/TestSupport.h"

#include <utility>

namespace testsupport {

ProcessCall hostCall(std::vector<std::string> arguments) {
    ProcessCall call;
    call.program = std::filesystem::path(QV_BINARY_DIR) / "bin/qvcardscan";
    call.arguments = std::move(arguments);
    call.environment = {{"QVCARDSCAN_TOKEN", std::nullopt}, {"QVCARDSCAN_LOG", std::nullopt}};
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
