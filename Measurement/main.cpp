// cardrequest DEGREES PICTURE: writes what the library would send for a picture to standard output.
#include "CardRequest.h"
#include "QVPlatform/Log.h"

#include <cstdio>
#include <cstdlib>
#include <string>

int main(int argumentCount, char** arguments) {
    const std::string degrees = argumentCount == 3 ? arguments[1] : "";
    if (degrees != "0" && degrees != "90" && degrees != "180" && degrees != "270") {
        (void)std::fputs("usage: cardrequest 0|90|180|270 PICTURE >JPEG\n", stderr);
        return 2;
    }
    qv::Log::setSink({});
    const auto request = measurement::requestFor(arguments[2], std::stoi(degrees));
    if (!request) {
        (void)std::fprintf(stderr, "cardrequest: \"%s\" is no picture that can be read\n", arguments[2]);
        return 1;
    }
    return std::fwrite(request->data(), 1, request->size(), stdout) == request->size() ? 0 : 1;
}
