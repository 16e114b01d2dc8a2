#include "Services/ServiceLog.h"

#include "QVPlatform/Log.h"

void logServiceFailure(std::string_view service, const qv::HTTPResponse& response) {
    if (response.error) {
        // The error's text may name what was asked for, its code does not.
        qv::Log::write("<WARNING> %@ could not be asked: error %d", service, response.error->code);
    } else {
        qv::Log::write("<WARNING> %@ answered with status %d", service, response.status);
    }
}
