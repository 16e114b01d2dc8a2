#include "CommandLine.h"
#include "Support/HostLog.h"
#include "Support/Messages.h"
#include "Support/ProgramFinder.h"
#include "Support/StandardStreams.h"

#include <exception>
#include <new>
#include <string>

int main(int argumentCount, char** arguments) {
    qvhost::StandardStreams::prepare();
    qvhost::ProgramFinder::setOwnName(argumentCount > 0 ? arguments[0] : nullptr);
    qvhost::HostLog::install(/*wanted=*/false);
    try {
        return static_cast<int>(qvhost::runCommandLine(argumentCount, arguments));
    } catch (const std::bad_alloc&) {
        qvhost::Messages::say("Giving up: there is not enough memory.");
        return static_cast<int>(qvhost::ExitStatus::Incomplete);
    } catch (const std::exception& exception) {
        qvhost::Messages::say(std::string("Giving up: ") + exception.what() + ".");
        return static_cast<int>(qvhost::ExitStatus::Incomplete);
    }
}
