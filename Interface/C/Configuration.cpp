#include "Arguments.h"
#include "QVCardScan/QVBizCardManager.h"
#include "QVPlatform/Bundle.h"
#include "QVPlatform/Log.h"
#include "QVSocialSearch/QVAddressBookController.h"
#include "QVSocialSearch/QVVCardFolder.h"
#include "UserData.h"
#include "qvcardscan.h"

#include <memory>

using namespace qvc;

namespace {

std::shared_ptr<QVAddressBook> folderAt(const char* path) {
    if (path == nullptr) return nullptr;
    return std::make_shared<QVVCardFolder>(path);
}

}  // namespace

uint32_t qv_abi_version(void) {
    return QV_ABI_VERSION;
}

const char* qv_library_version(void) {
    return QV_VERSION;
}

qv_status qv_set_server_url(const char* url, qv_error** error) {
    return reported(error, [&] {
        Outcome outcome = checkText(url, "server's address");
        if (outcome.status == QV_OK) QVBizCardManager::sharedManager()->setServerURL(textOf(url));
        return outcome;
    });
}

qv_status qv_set_data_folder(const char* path, qv_error** error) {
    return reported(error, [&] {
        qv::Bundle::setResourceFolder(textOf(path).value_or(""));
        return Outcome();
    });
}

qv_status qv_set_contacts_folder(const char* path, qv_error** error) {
    return reported(error, [&] {
        QVAddressBookController::sharedController()->setAddressBook(folderAt(path));
        return Outcome();
    });
}

qv_status qv_set_search_credentials(const char* key, const char* secret, qv_error** error) {
    return reported(error, [&] {
        for (const char* text : {key, secret}) {
            Outcome outcome = checkText(text, "key or secret");
            if (outcome.status != QV_OK) return outcome;
        }
        const auto manager = QVBizCardManager::sharedManager();
        manager->setLinkedInKey(textOf(key));
        manager->setLinkedInSecret(textOf(secret));
        return Outcome();
    });
}

void qv_set_search_time_out(double seconds) {
    guardedDo([&] { QVBizCardManager::sharedManager()->setSearchTimeOut(seconds); });
}

void qv_set_log_sink(qv_log_function sink, void* user_data, qv_release_function release) {
    guardedDo([&] {
        const auto data = share(user_data, release);
        if (sink == nullptr) return qv::Log::setSink(nullptr);
        qv::Log::setSink([sink, data](std::string_view message) {
            const std::string text(message);
            sink(text.c_str(), text.size(), data->get());
        });
    });
}

void qv_use_system_log(void) {
    guardedDo([] { qv::Log::useSystemLog(); });
}
