#include "Recognition/RemoteServer.h"

#include "Support/WebAddress.h"

namespace qvhost {

std::string RemoteServer::objectionTo(const std::string& url) {
    return WebAddress::objectionTo(url, "https://cards.example.com/", "put the server's token into a file");
}

}  // namespace qvhost
