#include <QVCardScan/QVCardScan.h>

#include <cstdlib>
#include <future>
#include <iostream>

/// usage: consumer SERVER_URL PICTURE: reads one card and prints its name, its errors and the length of its note.
int main(int argc, char** argv) {
    if (argc != 3) return EXIT_FAILURE;
    const auto manager = QVBizCardManager::sharedManager();
    manager->setServerURL(argv[1]);
    auto images = std::make_shared<std::vector<std::shared_ptr<qv::Image>>>();
    images->push_back(qv::Image::initWithContentsOfFile(argv[2]));
    const auto request = QVCardProcessingRequest::initWithNoteUUID("a-note", images, nullptr, "a-token",
                                                                   /*processImageForOCR=*/false);
    std::promise<std::shared_ptr<QVCardProcessingResponse>> done;
    manager->addRequest(request, [&](auto response) { done.set_value(response); });
    const auto response = done.get_future().get();
    std::cout << response->contactName().value_or("nobody") << '\n'
              << response->errors()->size() << " errors\n"
              << response->qvmlContent().value_or("").size() << " bytes of note\n";
    return response->errors()->empty() ? EXIT_SUCCESS : EXIT_FAILURE;
}
