// A host with a GLib main loop: reads a card, prints it, looks the person up, prints what was found, and ends. Nothing
// here needs a lock, because everything happens on the main thread.
// usage: QVCARDSCAN_TOKEN=… glib-host SERVER_URL PICTURE [FOLDER_OF_VCARDS]
#include <QVCardScan/QVCardScan.h>
#include <QVSocialSearch/QVVCardFolder.h>

#include <QVAdapters/QVGLibExecutor.h>
#include <glib.h>

#include <cstdlib>
#include <iostream>

namespace {

class Host {
  public:
    Host() {
        qv::MainQueue::setExecutor(QVGLibExecutor::executorForContext(nullptr));
        mObservation = qv::NotificationCenter::defaultCenter().addObserverForName(
            kQVSocialSearchFinishedNotification,
            [this](const qv::Notification& notification) { searched(notification); });
    }
    /// The loop goes: the library must not hand it work any more.
    ~Host() {
        qv::MainQueue::setExecutor(nullptr);
        g_main_loop_unref(mLoop);
    }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    void read(const char* picture, const char* token) {
        auto images = std::make_shared<std::vector<std::shared_ptr<qv::Image>>>();
        images->push_back(qv::Image::initWithContentsOfFile(picture));
        const auto request =
            QVCardProcessingRequest::initWithNoteUUID("a-note", images, nullptr, token, /*processImageForOCR=*/false);
        // The completion comes on a thread of the library, and goes on in the loop.
        QVBizCardManager::sharedManager()->addRequest(request, [this](auto response) {
            qv::MainQueue::executor()->dispatchAsync([this, response] { recognised(response); });
        });
    }
    int run() {
        g_main_loop_run(mLoop);
        return mStatus;
    }

  private:
    void recognised(const std::shared_ptr<QVCardProcessingResponse>& response) {
        std::cout << "read: " << response->contactName().value_or("nobody") << ", " << response->errors()->size()
                  << " errors" << std::endl;
        if (!response->errors()->empty() || !response->contact()) {
            mStatus = EXIT_FAILURE;
            return g_main_loop_quit(mLoop);
        }
        QVBizCardManager::sharedManager()->addSocialSearchRequestFromCardProcessingResponse(response);
    }
    void searched(const qv::Notification& notification) {
        const auto result = QVSocialSearchResult::fromNotification(notification);
        if (!result) return;
        std::cout << "searched: type " << result->resultType << ", company "
                  << (result->socialProfile ? result->socialProfile->company().value_or("unknown") : "unknown")
                  << std::endl;
        g_main_loop_quit(mLoop);
    }

    GMainLoop* const mLoop = g_main_loop_new(nullptr, FALSE);
    qv::NotificationCenter::Token mObservation;
    int mStatus = EXIT_SUCCESS;
};

}  // namespace

int main(int argc, char** argv) {
    const char* const token = std::getenv("QVCARDSCAN_TOKEN");
    if (argc < 3 || token == nullptr) {
        std::cerr << "usage: QVCARDSCAN_TOKEN=… glib-host SERVER_URL PICTURE [FOLDER_OF_VCARDS]\n";
        return EXIT_FAILURE;
    }
    const auto manager = QVBizCardManager::sharedManager();
    manager->setServerURL(argv[1]);
    // Whether they are there is all that counts: they allow searches.
    manager->setLinkedInKey("key");
    manager->setLinkedInSecret("secret");
    if (argc > 3) {
        QVAddressBookController::sharedController()->setAddressBook(std::make_shared<QVVCardFolder>(argv[3]));
    }
    Host host;
    host.read(argv[2], token);
    return host.run();
}
