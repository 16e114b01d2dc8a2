#include <QVCardScan/QVCardScan.h>

#include <cstdlib>
#include <future>
#include <iostream>

/// usage: minimal SERVER_URL PICTURE: reads one card and prints its name, its errors and its note. The token that the
/// server wants is in the environment.
int main(int argc, char** argv) {
    const char* const token = std::getenv("QVCARDSCAN_TOKEN");
    if (argc != 3 || token == nullptr) {
        std::cerr << "usage: QVCARDSCAN_TOKEN=… minimal SERVER_URL PICTURE\n";
        return EXIT_FAILURE;
    }
    const auto manager = QVBizCardManager::sharedManager();
    manager->setServerURL(argv[1]);

    auto images = std::make_shared<std::vector<std::shared_ptr<qv::Image>>>();
    images->push_back(qv::Image::initWithContentsOfFile(argv[2]));
    const auto request = QVCardProcessingRequest::initWithNoteUUID("a-note", images, /*imageHashes=*/nullptr, token,
                                                                   /*processImageForOCR=*/false);

    // The completion comes on a thread of the library; this one waits for it.
    std::promise<std::shared_ptr<QVCardProcessingResponse>> done;
    manager->addRequest(request, [&](auto response) { done.set_value(response); });
    const auto response = done.get_future().get();

    std::cout << response->contactName().value_or("nobody") << '\n'
              << response->errors()->size() << " errors\n"
              << response->qvmlContent().value_or("no note") << '\n';
    return response->errors()->empty() ? EXIT_SUCCESS : EXIT_FAILURE;
}
