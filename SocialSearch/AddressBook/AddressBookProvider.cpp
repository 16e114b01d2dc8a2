#include "AddressBook/AddressBookProvider.h"

#include "Merging/EntryMeaning.h"
#include "QVPlatform/Log.h"
#include "QVSocialSearch/QVAddressBookController.h"

#include <any>

namespace {

void logFailure(const qv::Error& error) {
    const auto text = error.userInfo.find(std::string(qv::kErrorDescriptionKey));
    const auto* description = text == error.userInfo.end() ? nullptr : std::any_cast<std::string>(&text->second);
    qv::Log::write("<WARNING> The address book could not be read whole: %@ %d %@", error.domain, error.code,
                   description ? QVString(*description) : std::nullopt);
}

}  // namespace

std::string AddressBookProvider::name() const {
    return "address book";
}

std::shared_ptr<QVSocialProfile> AddressBookProvider::profileForRequest(const QVSocialSearchRequest& request,
                                                                        Clock::time_point) {
    const auto addressBook = QVAddressBookController::sharedController()->addressBook();
    if (!addressBook) return nullptr;
    std::optional<qv::Error> error;
    auto found = addressBook->profilesWithEmailAddress(trimmed(request.emailAddress().value_or("")), &error);
    std::erase(found, nullptr);
    if (error) logFailure(*error);
    if (found.size() > 1) {
        qv::Log::write("<WARNING> %d contacts share the e-mail address; none of them is merged", found.size());
    }
    return found.size() == 1 ? found.front() : nullptr;
}
