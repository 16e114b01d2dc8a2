#include "AddressBook/SaveOperation.h"

#include <exception>
#include <utility>

namespace {

QVAddressBookSaveResult failure(QVAddressBookErrorCode code, std::string description) {
    QVAddressBookSaveResult result;
    result.error = qv::Error{std::string(kQVAddressBookErrorDomain),
                             code,
                             {{std::string(qv::kErrorDescriptionKey), std::move(description)}}};
    return result;
}

}  // namespace

SaveOperation::SaveOperation(std::shared_ptr<QVAddressBook> addressBook, std::shared_ptr<const QVSocialProfile> profile,
                             QVAddressBookCompletionHandler completionHandler)
    : mAddressBook(std::move(addressBook)),
      mProfile(std::move(profile)),
      mExecutor(qv::MainQueue::executor()),
      mCompletionHandler(std::move(completionHandler)) {
}

void SaveOperation::main() {
    report(save());
}

QVAddressBookSaveResult SaveOperation::save() const {
    if (!mProfile) return failure(QVAddressBookErrorNoProfile, "There is no profile to save");
    if (!mAddressBook) return failure(QVAddressBookErrorNoAddressBook, "No address book is chosen");
    try {
        return mAddressBook->saveProfile(*mProfile);
    } catch (const std::exception& exception) {
        return failure(QVAddressBookErrorBackEndFailed, exception.what());
    } catch (...) {
        return failure(QVAddressBookErrorBackEndFailed, "The address book failed");
    }
}

void SaveOperation::report(QVAddressBookSaveResult result) {
    if (!mCompletionHandler) return;
    mExecutor->dispatchAsync(
        [handler = std::move(mCompletionHandler), result = std::move(result)] { handler(result); });
}
