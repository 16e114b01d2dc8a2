// A host in small: runs one card through the installed library, against a server of its own that answers once.

#include <QVCardScan/QVCardScan.h>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <future>
#include <string>
#include <thread>

namespace {

int listenOnLoopback(std::string& url) {
    const int listener = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    if (::bind(listener, reinterpret_cast<sockaddr*>(&address), length) != 0 || ::listen(listener, 1) != 0) return -1;
    ::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length);
    url = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/";
    return listener;
}

// Takes what the client sends, up to the picture's last bytes, and answers with a card.
void answerOnce(int listener) {
    const std::string card =
        "<recoIndex lang=\"en\"><item fldType=\"name\"><t w=\"90\">JANE DOE</t></item>"
        "<item fldType=\"email\"><t w=\"80\">jane@example.com</t></item>"
        "<item fldType=\"title\"><t w=\"80\">Engineer</t></item></recoIndex>";
    const std::string answer =
        "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " + std::to_string(card.size()) + "\r\n\r\n" + card;
    const int connection = ::accept(listener, nullptr, nullptr);
    std::string request;
    char bytes[4096];
    while (request.find("\xFF\xD9") == std::string::npos) {
        const ssize_t count = ::recv(connection, bytes, sizeof bytes, 0);
        if (count <= 0) break;
        request.append(bytes, static_cast<std::size_t>(count));
    }
    ::send(connection, answer.data(), answer.size(), MSG_NOSIGNAL);
    ::close(connection);
}

std::shared_ptr<QVCardProcessingResponse> scan(const char* picture, const std::string& url) {
    const auto images = std::make_shared<std::vector<std::shared_ptr<qv::Image>>>();
    images->push_back(qv::Image::initWithContentsOfFile(picture));
    const auto request = QVCardProcessingRequest::initWithNoteUUID("note", images, nullptr, "token",
                                                                   /*processImageForOCR=*/false);
    const auto done = std::make_shared<std::promise<std::shared_ptr<QVCardProcessingResponse>>>();
    const auto manager = QVBizCardManager::sharedManager();
    manager->setServerURL(url);
    manager->addRequest(request, [done](auto response) { done->set_value(std::move(response)); });
    return done->get_future().get();
}

}  // namespace

int main(int argc, char** argv) {
    std::string url;
    const int listener = listenOnLoopback(url);
    if (argc != 2 || listener < 0) return 2;
    std::thread server(answerOnce, listener);
    const auto response = scan(argv[1], url);
    ::shutdown(listener, SHUT_RDWR);  // a server that was never asked waits no longer
    server.join();
    ::close(listener);
    for (const auto& error : *response->errors())
        std::printf("error %ld\n", error.code);
    const QVString note = response->qvmlContent();
    const bool hasName = note && note->find("Jane Doe") != std::string::npos;
    std::printf("%s, note of %zu bytes\n", response->contactName().value_or("nobody").c_str(), note ? note->size() : 0);
    return hasName && response->errors()->empty() ? 0 : 1;
}
