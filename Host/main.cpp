#include "CommandLine.h"
#include "Support/HostLog.h"
#include "Support/Messages.h"
#include "Support/ProgramFinder.h"
#include "Support/StandardStreams.h"

#include <exception>
#include <string>

int main(int argumentCount, char** arguments) {
    qvhost::StandardStreams::prepare();
    qvhost::ProgramFinder::setOwnName(argumentCount > 0 ? arguments[0] : nullptr);
    qvhost::HostLog::install(/*wanted=*/false);
    try {
        return static_cast<int>(qvhost::runCommandLine(argumentCount, arguments));
    } catch (const std::exception& exception) {
        qvhost::Messages::say(std::string("Giving up: ") + exception.what() + ".");
        return static_cast<int>(qvhost::ExitStatus::Incomplete);
    }
}
